#include "analysis/BatchComparison.h"

#include "analysis/ContentSorting.h"
#include "analysis/HashSplit.h"
#include "analysis/HeadComparison.h"
#include "analysis/SteppedComparison.h"

#include <QMutex>
#include <QMutexLocker>

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <utility>

namespace {

class BatchComparison
{
public:
    BatchComparison(ComparisonRun &run, Candidates candidates)
        : m_run(run)
        , m_candidates(std::move(candidates))
        , m_batchSize(m_candidates.size <= headSize ? static_cast<std::size_t>(headMemory / m_candidates.size)
                                                    : run.openFilesPerTask())
    {
    }

    [[nodiscard]] std::size_t batches() const
    {
        return (m_candidates.sets.size() + m_batchSize - 1) / m_batchSize;
    }

    void compareBatch(std::size_t number)
    {
        Candidates batch = withoutSets();
        const std::span rest = std::span(m_candidates.sets).subspan(number * m_batchSize);
        std::ranges::move(rest.first(std::min(m_batchSize, rest.size())), std::back_inserter(batch.sets));
        const std::optional<ContentLabels> labels = compare(batch);
        if (!labels)
            return;
        for (const Candidates &part : splitByLabel(m_run, std::move(batch), *labels, LoneCandidates::Kept)) {
            EqualFiles merged = mergedSets(part);
            merged.isCounted = true;
            const QMutexLocker lock(&m_mutex);
            m_merged.push_back(std::move(merged));
        }
    }

    void sortMerged()
    {
        const std::size_t before = m_candidates.sets.size();
        const std::size_t after = m_merged.size();
        Candidates merged = withoutSets();
        merged.sets = std::move(m_merged);
        const bool isHashed = merged.equalHash == Candidates::Hash::Content;
        const bool fewWereEqual = after > m_batchSize && 2 * after > before + 1;
        if (fewWereEqual && !isHashed) {
            splitByHash(m_run, std::move(merged), Candidates::Hash::Content);
        } else if (fewWereEqual && after == before) {
            // Equal hashes but different contents: another program is changing the files. Stop here.
            for (EqualFiles &set : merged.sets)
                m_run.addGroup(std::move(set));
        } else {
            std::vector<Candidates> classes;
            classes.push_back(std::move(merged));
            sortByContent(m_run, std::move(classes));
        }
    }

private:
    [[nodiscard]] Candidates withoutSets() const
    {
        return {{}, m_candidates.size, m_candidates.equalBytes, m_candidates.equalHash};
    }

    /// The labels of the sets of \a batch; nothing if the run was abandoned.
    [[nodiscard]] std::optional<ContentLabels> compare(const Candidates &batch)
    {
        if (batch.size <= headSize)
            return compareHeads(m_run, {&batch, 1}).front();
        return compareInStep(m_run, batch.sets, {batch.equalBytes, batch.size}, [] { return false; });
    }

    ComparisonRun &m_run;
    /// Its sets are moved out batch by batch.
    Candidates m_candidates;
    const std::size_t m_batchSize;
    QMutex m_mutex;
    /// Protected by the mutex: the sets of the compared batches, equal ones merged.
    std::vector<EqualFiles> m_merged;
};

} // namespace

void compareInBatches(ComparisonRun &run, Candidates candidates)
{
    const auto comparison = std::make_shared<BatchComparison>(run, std::move(candidates));
    run.addTasks(
        comparison->batches(), [comparison](std::size_t number) { comparison->compareBatch(number); },
        [comparison] { comparison->sortMerged(); });
}
