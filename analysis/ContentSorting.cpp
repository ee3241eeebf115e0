#include "analysis/ContentSorting.h"

#include "analysis/BatchComparison.h"
#include "analysis/HashSplit.h"
#include "analysis/HeadComparison.h"
#include "analysis/RangeComparison.h"

#include <memory>

namespace {

/// Number of sets of a task: low enough that all threads finish at about the same time.
constexpr std::size_t setsPerTask = 1024;

/// Whether the next step is to compare the heads in memory.
bool canCompareHeads(const Candidates &candidates)
{
    const bool headsAgree = candidates.equalBytes > 0 || candidates.equalHash != Candidates::Hash::None;
    return headBytes(candidates) <= headMemory && (candidates.size <= headSize || !headsAgree);
}

void sortByHead(ComparisonRun &run, std::vector<Candidates> &classes)
{
    const std::vector<ContentLabels> labels = compareHeads(run, classes);
    std::vector<Candidates> equalHeads;
    for (std::size_t i = 0; i < classes.size(); ++i) {
        for (Candidates &part : splitByLabel(run, std::move(classes[i]), labels[i])) {
            part.equalBytes = std::min(part.size, headSize);
            equalHeads.push_back(std::move(part));
        }
    }
    sortByContent(run, std::move(equalHeads));
}

/// Combines size classes into tasks that compare heads: the more files in a task, the better the disk can
/// reorder the reads.
class HeadTasks
{
public:
    explicit HeadTasks(ComparisonRun &run)
        : m_run(run)
    {
    }

    void add(Candidates candidates)
    {
        const qint64 bytes = headBytes(candidates);
        if (m_bytes + bytes > headMemory || m_sets + candidates.sets.size() > setsPerTask)
            flush();
        m_bytes += bytes;
        m_sets += candidates.sets.size();
        m_classes.push_back(std::move(candidates));
    }

    void flush()
    {
        if (m_classes.empty())
            return;
        const auto classes = std::make_shared<std::vector<Candidates>>(std::move(m_classes));
        m_run.addTask([&run = m_run, classes] { sortByHead(run, *classes); });
        m_classes.clear();
        m_bytes = 0;
        m_sets = 0;
    }

private:
    ComparisonRun &m_run;
    std::vector<Candidates> m_classes;
    qint64 m_bytes = 0;
    std::size_t m_sets = 0;
};

/// Adds the next tasks for candidates whose heads are equal or do not fit into memory.
void sortFurther(ComparisonRun &run, Candidates candidates)
{
    if (candidates.equalHash == Candidates::Hash::None && headBytes(candidates) > headMemory)
        splitByHash(run, std::move(candidates), Candidates::Hash::Head);
    else if (candidates.size > headSize && candidates.sets.size() <= run.openFilesPerTask())
        compareRanges(run, std::move(candidates));
    else
        compareInBatches(run, std::move(candidates));
}

} // namespace

void sortByContent(ComparisonRun &run, std::vector<Candidates> classes)
{
    HeadTasks headTasks(run);
    for (Candidates &candidates : classes) {
        if (candidates.sets.size() == 1 || candidates.equalBytes == candidates.size)
            run.addGroup(mergedSets(candidates));
        else if (canCompareHeads(candidates))
            headTasks.add(std::move(candidates));
        else
            sortFurther(run, std::move(candidates));
    }
    headTasks.flush();
}
