#include "analysis/RangeComparison.h"

#include "analysis/SteppedComparison.h"

#include <QMutex>
#include <QMutexLocker>

#include <algorithm>
#include <atomic>
#include <map>
#include <memory>
#include <optional>
#include <utility>

namespace {

/// Bytes of each file that one task compares. Large enough for sequential reads, small enough that all
/// threads finish a pair of large files at about the same time.
constexpr qint64 rangeSize = 32LL * 1024 * 1024;

/// Compares the ranges of the files of some candidates in several tasks. Two sets are equal if they are equal
/// in every range.
class RangeComparison
{
public:
    RangeComparison(ComparisonRun &run, Candidates candidates)
        : m_run(run)
        , m_candidates(std::move(candidates))
        , m_labels(m_candidates.sets.size(), 0)
    {
    }

    [[nodiscard]] std::size_t ranges() const
    {
        const qint64 bytes = m_candidates.size - m_candidates.equalBytes;
        return static_cast<std::size_t>((bytes + rangeSize - 1) / rangeSize);
    }

    void compareRange(std::size_t number)
    {
        const qint64 begin = m_candidates.equalBytes + static_cast<qint64>(number) * rangeSize;
        const ByteRange range{begin, std::min(begin + rangeSize, m_candidates.size)};
        const std::optional<ContentLabels> labels =
            compareInStep(m_run, m_candidates.sets, range, [this] { return m_isSettled.load(); });
        const QMutexLocker lock(&m_mutex);
        if (labels && !m_isSettled)
            combine(*labels);
    }

    void finish()
    {
        for (const Candidates &part : splitByLabel(m_run, std::move(m_candidates), m_labels))
            m_run.addGroup(mergedSets(part));
    }

private:
    void combine(const ContentLabels &labels)
    {
        std::map<std::pair<int, int>, int> combinations;
        std::size_t unreadable = 0;
        for (std::size_t i = 0; i < labels.size(); ++i) {
            int &label = m_labels[i];
            if (label == unreadableLabel || labels[i] == unreadableLabel) {
                label = unreadableLabel;
                ++unreadable;
            } else {
                const auto next = static_cast<int>(combinations.size());
                label = combinations.try_emplace({label, labels[i]}, next).first->second;
            }
        }
        m_isSettled = combinations.size() + unreadable == labels.size();
    }

    ComparisonRun &m_run;
    Candidates m_candidates;
    /// Whether all sets are known to differ, so that no further range needs to be read.
    std::atomic<bool> m_isSettled = false;
    QMutex m_mutex;
    /// Protected by the mutex: the labels after the ranges compared so far.
    ContentLabels m_labels;
};

} // namespace

void compareRanges(ComparisonRun &run, Candidates candidates)
{
    const auto comparison = std::make_shared<RangeComparison>(run, std::move(candidates));
    run.addTasks(
        comparison->ranges(), [comparison](std::size_t number) { comparison->compareRange(number); },
        [comparison] { comparison->finish(); });
}
