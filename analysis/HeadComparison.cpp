#include "analysis/HeadComparison.h"

#include "analysis/ComparedFile.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <numeric>

namespace {

qint64 headLength(const Candidates &candidates)
{
    return std::min(candidates.size, headSize);
}

/// A head that is to be read into memory.
struct Wanted
{
    quint32 file = 0;
    FileIdentity identity;
    std::span<char> memory;
    Head *head = nullptr;
};

std::vector<Wanted> wantedHeads(const ComparisonRun &run, std::span<const Candidates> classes, Heads &heads)
{
    std::vector<Wanted> wanted;
    std::size_t bytes = 0;
    for (const Candidates &candidates : classes) {
        heads.heads.emplace_back(candidates.sets.size());
        bytes += static_cast<std::size_t>(headBytes(candidates));
    }
    heads.memory.resize(bytes);
    std::span<char> rest(heads.memory);
    for (std::size_t i = 0; i < classes.size(); ++i) {
        const auto length = static_cast<std::size_t>(headLength(classes[i]));
        for (std::size_t set = 0; set < classes[i].sets.size(); ++set) {
            const quint32 file = classes[i].sets[set].first;
            wanted.push_back({file, run.file(file).identity, rest.first(length), &heads.heads[i][set]});
            rest = rest.subspan(length);
        }
    }
    std::ranges::sort(wanted, {}, &Wanted::identity);
    return wanted;
}

/// The files whose heads are being prefetched, oldest request first.
class HeadPrefetch
{
public:
    explicit HeadPrefetch(ComparisonRun &run)
        : m_run(run)
    {
    }

    /// Reads a head from the page cache, or starts to prefetch it.
    void begin(const Wanted &wanted)
    {
        if (m_files.size() == m_run.openFilesPerTask())
            endFirst();
        File &file = m_files.emplace_back(m_run.file(wanted.file), wanted);
        if (!file.open.problem().isEmpty() || file.open.readIfCached(0, wanted.memory)) {
            end(file);
            m_files.pop_back();
        } else {
            file.open.prefetch(0, std::ssize(wanted.memory));
        }
    }

    /// Reads the heads of all files that are still open.
    void endAll()
    {
        while (!m_files.empty())
            endFirst();
    }

private:
    struct File
    {
        File(const SurveyedFile &file, const Wanted &head)
            : open(file)
            , wanted(head)
        {
        }

        ComparedFile open;
        Wanted wanted;
    };

    void endFirst()
    {
        m_files.front().open.read(0, m_files.front().wanted.memory);
        end(m_files.front());
        m_files.pop_front();
    }

    void end(const File &file)
    {
        if (file.open.problem().isEmpty())
            *file.wanted.head = file.wanted.memory;
        else
            m_run.addUnreadable(file.wanted.file, file.open.problem());
    }

    ComparisonRun &m_run;
    std::deque<File> m_files;
};

int compare(Head a, Head b)
{
    return std::memcmp(a.data(), b.data(), a.size());
}

ContentLabels labelsOf(const std::vector<Head> &heads)
{
    ContentLabels labels(heads.size(), unreadableLabel);
    std::vector<std::size_t> order(heads.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::erase_if(order, [&heads](std::size_t i) { return heads[i].empty(); });
    std::ranges::sort(
        order, [&heads](std::size_t a, std::size_t b) { return compare(heads[a], heads[b]) < 0; });
    int label = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && compare(heads[order[i - 1]], heads[order[i]]) != 0)
            ++label;
        labels[order[i]] = label;
    }
    return labels;
}

/// The progress in bytes after the heads of \a candidates were compared.
qint64 bytesDealtWith(const Candidates &candidates, const ContentLabels &labels)
{
    const LoneSets loneSets(labels);
    qint64 bytes = 0;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (!candidates.sets[i].isCounted)
            bytes += loneSets.contains(i) ? candidates.size : headLength(candidates);
    }
    return bytes;
}

} // namespace

qint64 headBytes(const Candidates &candidates)
{
    return headLength(candidates) * std::ssize(candidates.sets);
}

Heads readHeads(ComparisonRun &run, std::span<const Candidates> classes)
{
    Heads heads;
    HeadPrefetch prefetch(run);
    for (const Wanted &wanted : wantedHeads(run, classes, heads)) {
        if (run.isAbandoned())
            break;
        prefetch.begin(wanted);
    }
    prefetch.endAll();
    return heads;
}

std::vector<ContentLabels> compareHeads(ComparisonRun &run, std::span<const Candidates> classes)
{
    const Heads heads = readHeads(run, classes);
    std::vector<ContentLabels> labels;
    qint64 bytes = 0;
    for (std::size_t i = 0; i < classes.size(); ++i) {
        labels.push_back(labelsOf(heads.heads[i]));
        bytes += bytesDealtWith(classes[i], labels.back());
    }
    if (!run.isAbandoned())
        run.addProgress(bytes);
    return labels;
}
