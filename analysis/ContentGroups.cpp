#include "analysis/ContentGroups.h"

#include "analysis/ComparedFile.h"
#include "analysis/ComparisonRun.h"
#include "analysis/ContentSorting.h"
#include "analysis/FileHash.h"
#include "analysis/HeadComparison.h"

#include <algorithm>
#include <map>
#include <utility>

namespace {

/// Indexes of files, in ascending order of size.
using Indexes = std::span<const quint32>;
/// Compares the files of one or more complete size classes.
using Comparison = void (*)(ComparisonRun &run, Indexes indexes);

/// Number of small files per task: low enough that all threads finish at about the same time.
constexpr std::size_t filesPerTask = 1024;

std::vector<quint32> sortedBySize(std::span<const SurveyedFile> files)
{
    // A separate array of sizes: reading them from files would cause a cache miss in every comparison.
    std::vector<std::pair<qint64, quint32>> sizes;
    sizes.reserve(files.size());
    for (quint32 index = 0; index < files.size(); ++index)
        sizes.emplace_back(files[index].size, index);
    std::ranges::sort(sizes);
    std::vector<quint32> order(files.size());
    std::ranges::transform(sizes, order.begin(), &std::pair<qint64, quint32>::second);
    return order;
}

/// The leading files of \a indexes that have the size of the first one.
Indexes firstSizeClass(const ComparisonRun &run, Indexes indexes)
{
    const qint64 size = run.file(indexes.front()).size;
    const auto isLarger = [&run, size](quint32 index) { return run.file(index).size > size; };
    const auto end = std::ranges::find_if(indexes, isLarger);
    return indexes.first(static_cast<std::size_t>(end - indexes.begin()));
}

Candidates candidatesOf(const ComparisonRun &run, Indexes sizeClass)
{
    Candidates candidates{.sets = {}, .size = run.file(sizeClass.front()).size};
    candidates.sets.reserve(sizeClass.size());
    for (const quint32 index : sizeClass)
        candidates.sets.push_back({index});
    return candidates;
}

/// Adds the tasks that group the files of one or more complete size classes by their bytes.
void compareBytes(ComparisonRun &run, Indexes indexes)
{
    std::vector<Candidates> classes;
    while (!indexes.empty()) {
        const Indexes sizeClass = firstSizeClass(run, indexes);
        indexes = indexes.subspan(sizeClass.size());
        if (sizeClass.size() > 1)
            classes.push_back(candidatesOf(run, sizeClass));
    }
    sortByContent(run, std::move(classes));
}

/// Groups the files of one size class by their fingerprints.
void compareFingerprints(ComparisonRun &run, Indexes sizeClass)
{
    std::map<QByteArray, EqualFiles> groups;
    for (const quint32 index : sizeClass) {
        if (run.isAbandoned())
            return;
        const QByteArray fingerprint = computeFileHash(run.file(index).path, fingerprintSampleSize);
        if (fingerprint.isEmpty())
            run.addUnreadable(index, ComparedFile(run.file(index)).problem());
        else if (const auto [group, isNew] = groups.try_emplace(fingerprint, EqualFiles{index}); !isNew)
            group->second.others.push_back(index);
        run.addProgress(run.file(index).size);
    }
    for (auto &[fingerprint, group] : groups)
        run.addGroup(std::move(group));
}

/// Groups the files of one or more complete size classes by their fingerprints.
void compareSamples(ComparisonRun &run, Indexes indexes)
{
    while (!indexes.empty()) {
        const Indexes sizeClass = firstSizeClass(run, indexes);
        indexes = indexes.subspan(sizeClass.size());
        if (sizeClass.size() > 1)
            compareFingerprints(run, sizeClass);
    }
}

/// Adds tasks for all files in \a order. Each calls \a compare for one or more complete size classes.
void addTasks(ComparisonRun &run, Indexes order, Comparison compare)
{
    while (!order.empty()) {
        std::size_t count = 0;
        qint64 bytes = 0;
        while (count < order.size() && count < filesPerTask && bytes < headMemory) {
            const Indexes sizeClass = firstSizeClass(run, order.subspan(count));
            const qint64 size = run.file(sizeClass.front()).size;
            bytes += std::min(size, headSize) * std::ssize(sizeClass);
            if (sizeClass.size() > 1)
                run.addTotal(size * std::ssize(sizeClass));
            count += sizeClass.size();
        }
        run.addTask([&run, compare, some = order.first(count)] { compare(run, some); });
        order = order.subspan(count);
    }
}

} // namespace

ContentGroups groupByContent(std::span<const SurveyedFile> files, ContentComparison comparison, int threads,
    const ComparisonCallbacks &callbacks)
{
    ComparisonRun run(files, threads, callbacks);
    const std::vector<quint32> order = sortedBySize(files);
    addTasks(run, order, comparison == ContentComparison::Bytes ? compareBytes : compareSamples);
    run.runTasks();
    return run.takeResult();
}
