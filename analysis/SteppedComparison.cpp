#include "analysis/SteppedComparison.h"

#include "analysis/ComparedFile.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <optional>

namespace {

/// Small enough that two blocks fit into the second-level cache of a core, so that comparing them is fast.
constexpr qint64 blockSize = 128LL * 1024;
/// Maximum number of bytes prefetched for all files of a comparison together. Keeps the disk busy.
constexpr qint64 maxPrefetch = 8LL * 1024 * 1024;
/// Number of bytes prefetched for a file at least: enough for long sequential reads on a rotating disk, and
/// little waste if the files differ early.
constexpr qint64 minPrefetch = 1024LL * 1024;

using Block = std::vector<char>;

/// Sets whose contents are equal up to a position.
struct Agreeing
{
    std::vector<std::size_t> sets;
    qint64 position = 0;
    /// End of the bytes prefetched so far; nothing while all bytes were in the page cache.
    std::optional<qint64> prefetchedUpTo = std::nullopt;
};

class SteppedComparison
{
public:
    SteppedComparison(ComparisonRun &run, std::span<const EqualFiles> sets, ByteRange range)
        : m_run(run)
        , m_sets(sets)
        , m_range(range)
        , m_labels(sets.size(), unreadableLabel)
        , m_uncounted(std::ranges::count(sets, false, &EqualFiles::isCounted) * range.size())
    {
        m_agreeing.push_back({{}, range.begin});
        for (std::size_t set = 0; set < sets.size(); ++set) {
            const SurveyedFile &file = run.file(sets[set].first);
            if (checkProblem(set, m_files.emplace_back(std::in_place, file)->problem()))
                m_agreeing.back().sets.push_back(set);
        }
    }

    std::optional<ContentLabels> labels(const AbandonCheck &isSettled)
    {
        while (!m_agreeing.empty() && !isSettled() && !m_run.isAbandoned()) {
            // Moved out of the list because step() may add elements to it.
            Agreeing agreeing = std::move(m_agreeing.back());
            m_agreeing.pop_back();
            if (agreeing.sets.size() > 1 && agreeing.position < m_range.end)
                step(std::move(agreeing));
            else
                end(agreeing);
        }
        if (!m_run.isAbandoned())
            m_run.addProgress(m_uncounted);
        return m_agreeing.empty() ? std::optional(m_labels) : std::nullopt;
    }

private:
    /// Reads the next block of each file and splits the sets by its content.
    void step(Agreeing agreeing)
    {
        const qint64 begin = agreeing.position;
        const auto length = static_cast<std::size_t>(std::min(blockSize, m_range.end - begin));
        std::vector<Agreeing> parts;
        prefetchNext(agreeing);
        for (const std::size_t set : agreeing.sets) {
            const std::span<char> block = blockOfPart(parts.size()).first(length);
            if (!read(set, agreeing, block))
                continue;
            const std::size_t part = findPart(parts.size(), block);
            if (part == parts.size())
                parts.push_back({{}, begin + static_cast<qint64>(length)});
            parts[part].sets.push_back(set);
        }
        countBlock(agreeing, static_cast<qint64>(length));
        for (Agreeing &part : parts) {
            part.prefetchedUpTo = agreeing.prefetchedUpTo;
            m_agreeing.push_back(std::move(part));
        }
    }

    std::span<char> blockOfPart(std::size_t part)
    {
        if (part == m_blocks.size())
            m_blocks.emplace_back(blockSize);
        return m_blocks[part];
    }

    /// The index of the first of \a count parts whose block equals \a block; \a count if there is none.
    [[nodiscard]] std::size_t findPart(std::size_t count, std::span<const char> block) const
    {
        std::size_t part = 0;
        while (part < count && std::memcmp(m_blocks[part].data(), block.data(), block.size()) != 0)
            ++part;
        return part;
    }

    /// Reads the block at the position of \a agreeing. Returns false on failure.
    [[nodiscard]] bool read(std::size_t set, Agreeing &agreeing, std::span<char> block)
    {
        ComparedFile &file = *m_files[set];
        if (agreeing.prefetchedUpTo || !file.readIfCached(agreeing.position, block)) {
            if (!agreeing.prefetchedUpTo) {
                agreeing.prefetchedUpTo = agreeing.position;
                prefetchNext(agreeing);
            }
            file.read(agreeing.position, block);
        }
        return checkProblem(set, file.problem());
    }

    /// Prefetches the bytes that will be read next, in pieces of growing size.
    void prefetchNext(Agreeing &agreeing)
    {
        if (!agreeing.prefetchedUpTo || *agreeing.prefetchedUpTo == m_range.end)
            return;
        const qint64 most = maxPrefetch / std::ssize(agreeing.sets);
        const qint64 ahead = std::max(std::min(most, agreeing.position - m_range.begin), minPrefetch);
        if (*agreeing.prefetchedUpTo - agreeing.position > ahead / 2)
            return;
        const qint64 end = std::min(agreeing.position + ahead, m_range.end);
        for (const std::size_t set : agreeing.sets)
            m_files[set]->prefetch(*agreeing.prefetchedUpTo, end - *agreeing.prefetchedUpTo);
        agreeing.prefetchedUpTo = end;
    }

    /// Labels and closes sets that are equal up to the end, or a single set that differs from all others.
    void end(const Agreeing &agreeing)
    {
        for (const std::size_t set : agreeing.sets) {
            m_labels[set] = m_nextLabel;
            m_files[set].reset();
        }
        ++m_nextLabel;
    }

    /// Reports \a problem and returns false unless it is empty.
    [[nodiscard]] bool checkProblem(std::size_t set, const QString &problem)
    {
        if (problem.isEmpty())
            return true;
        m_run.addUnreadable(m_sets[set].first, problem);
        m_files[set].reset();
        return false;
    }

    void countBlock(const Agreeing &agreeing, qint64 bytes)
    {
        const auto isUncounted = [this](std::size_t set) { return !m_sets[set].isCounted; };
        const qint64 counted = std::ranges::count_if(agreeing.sets, isUncounted) * bytes;
        m_uncounted -= counted;
        m_run.addProgress(counted);
    }

    ComparisonRun &m_run;
    const std::span<const EqualFiles> m_sets;
    const ByteRange m_range;
    ContentLabels m_labels;
    int m_nextLabel = 0;
    /// Bytes of all sets in the range that the progress does not include yet.
    qint64 m_uncounted;
    /// The open file of each set; empty once it has been closed.
    std::deque<std::optional<ComparedFile>> m_files;
    std::vector<Agreeing> m_agreeing;
    /// The current blocks: one for each part, and one to read into.
    std::vector<Block> m_blocks;
};

} // namespace

std::optional<ContentLabels> compareInStep(
    ComparisonRun &run, std::span<const EqualFiles> sets, ByteRange range, const AbandonCheck &isSettled)
{
    return SteppedComparison(run, sets, range).labels(isSettled);
}
