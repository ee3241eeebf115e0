#include "analysis/HashSplit.h"

#include "analysis/ComparedFile.h"
#include "analysis/ContentSorting.h"
#include "analysis/HeadComparison.h"

#include <QCryptographicHash>
#include <QHashFunctions>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <numeric>
#include <span>
#include <utility>

namespace {

/// Number of sets of a task. Their heads take 4 MiB.
constexpr std::size_t setsPerTask = 256;
/// Bytes read at once. Fits into the second-level cache of a core.
constexpr qint64 blockSize = 128LL * 1024;

using HashValue = std::array<quint64, 2>;

HashValue hashOf(Head head)
{
    return {qHashBits(head.data(), head.size()), 0};
}

/// The hash of all bytes of \a file. Cryptographic: crafted files with equal hashes could slow down the
/// comparison.
HashValue hashOfContent(const ComparisonRun &run, ComparedFile &file, qint64 size)
{
    QCryptographicHash hash(QCryptographicHash::Blake2b_256);
    std::vector<char> block(blockSize);
    for (qint64 position = 0; position < size && file.problem().isEmpty() && !run.isAbandoned();
         position += blockSize) {
        const std::span<char> piece =
            std::span(block).first(static_cast<std::size_t>(std::min(blockSize, size - position)));
        file.read(position, piece);
        hash.addData(QByteArrayView(piece.data(), std::ssize(piece)));
    }
    HashValue value{};
    std::memcpy(value.data(), hash.result().constData(), sizeof value);
    return value;
}

class HashSplit
{
public:
    HashSplit(ComparisonRun &run, Candidates candidates, Candidates::Hash hash)
        : m_run(run)
        , m_candidates(std::move(candidates))
        , m_hash(hash)
        , m_values(m_candidates.sets.size())
        , m_isReadable(m_candidates.sets.size(), 0)
    {
    }

    [[nodiscard]] std::size_t tasks() const
    {
        return (m_candidates.sets.size() + setsPerTask - 1) / setsPerTask;
    }

    void hashSets(std::size_t task)
    {
        const std::size_t begin = task * setsPerTask;
        const std::size_t end = std::min(begin + setsPerTask, m_candidates.sets.size());
        if (m_hash == Candidates::Hash::Head)
            hashHeads(begin, end);
        else
            hashContents(begin, end);
    }

    void sortParts()
    {
        const ContentLabels labels = contentLabels();
        // Free the memory early: there can be a million sets.
        m_values = {};
        m_isReadable = {};
        const LoneSets loneSets(labels);
        qint64 bytesDealtWith = 0;
        for (std::size_t i = 0; i < labels.size(); ++i) {
            if (loneSets.contains(i) && !m_candidates.sets[i].isCounted)
                bytesDealtWith += m_candidates.size;
        }
        m_run.addProgress(bytesDealtWith);
        m_candidates.equalHash = m_hash;
        sortByContent(m_run, splitByLabel(m_run, std::move(m_candidates), labels));
    }

private:
    void hashHeads(std::size_t begin, std::size_t end)
    {
        const std::span sets = std::span(m_candidates.sets).subspan(begin, end - begin);
        const Candidates some{.sets = {sets.begin(), sets.end()}, .size = m_candidates.size};
        const Heads heads = readHeads(m_run, {&some, 1});
        for (std::size_t i = begin; i < end; ++i) {
            const Head head = heads.heads.front()[i - begin];
            if (!head.empty())
                setValue(i, hashOf(head));
        }
    }

    void hashContents(std::size_t begin, std::size_t end)
    {
        for (std::size_t i = begin; i < end && !m_run.isAbandoned(); ++i) {
            const quint32 index = m_candidates.sets[i].first;
            ComparedFile file(m_run.file(index));
            const HashValue value = hashOfContent(m_run, file, m_candidates.size);
            if (file.problem().isEmpty())
                setValue(i, value);
            else
                m_run.addUnreadable(index, file.problem());
        }
    }

    void setValue(std::size_t set, const HashValue &value)
    {
        m_values[set] = value;
        m_isReadable[set] = 1;
    }

    [[nodiscard]] ContentLabels contentLabels() const
    {
        ContentLabels labels(m_values.size(), unreadableLabel);
        std::vector<quint32> order(m_values.size());
        std::iota(order.begin(), order.end(), 0U);
        std::erase_if(order, [this](quint32 set) { return m_isReadable[set] == 0; });
        std::ranges::sort(order, {}, [this](quint32 set) { return m_values[set]; });
        int label = 0;
        for (std::size_t i = 0; i < order.size(); ++i) {
            if (i > 0 && m_values[order[i - 1]] != m_values[order[i]])
                ++label;
            labels[order[i]] = label;
        }
        return labels;
    }

    ComparisonRun &m_run;
    Candidates m_candidates;
    const Candidates::Hash m_hash;
    /// One element for each set. Each element is written by one task only.
    std::vector<HashValue> m_values;
    std::vector<char> m_isReadable;
};

} // namespace

void splitByHash(ComparisonRun &run, Candidates candidates, Candidates::Hash hash)
{
    const auto split = std::make_shared<HashSplit>(run, std::move(candidates), hash);
    run.addTasks(
        split->tasks(), [split](std::size_t task) { split->hashSets(task); },
        [split] { split->sortParts(); });
}
