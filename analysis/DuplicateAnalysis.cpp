#include "analysis/DuplicateAnalysis.h"

#include "analysis/FingerprintQueue.h"
#include "analysis/FingerprintTable.h"
#include "analysis/PoolThreadRelease.h"
#include "analysis/SizeClasses.h"
#include "scan/FileCategories.h"

#include <QFileInfo>
#include <QThreadPool>
#include <QtConcurrentMap>

#include <optional>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

/// The position of the progress bar after \a processed of \a total files. The analysis moves it from 33
/// to 66.
int progressPercent(qsizetype processed, qsizetype total)
{
    return static_cast<int>(33 + processed * 33 / total);
}

/// Returns freed memory to the system. glibc would keep it for the current thread, but other threads build
/// the groups.
void returnFreedMemory()
{
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}

/// Sets all members of \a group that follow from its files.
void describeGroup(DuplicateGroup &group)
{
    const QFileInfo first(group.files.first());
    group.fileName = first.fileName();
    group.size = first.size();
    group.modified = first.fileTime(QFileDevice::FileModificationTime);
    group.category = categoryOf(lowerCaseSuffix(group.files.first()));
    markAllButKeptCopy(group);
}

QList<DuplicateGroup> makeGroups(QList<QStringList> duplicates, const AbandonCheck &abandoned)
{
    QList<DuplicateGroup> groups(duplicates.size());
    for (qsizetype i = 0; i < groups.size(); ++i)
        groups[i].files = std::move(duplicates[i]);
    duplicates.clear();
    const auto describeUnlessAbandoned = [&abandoned](DuplicateGroup &group) {
        if (!abandoned())
            describeGroup(group);
    };
    QFuture<void> described =
        QtConcurrent::map(QThreadPool::globalInstance(), groups, describeUnlessAbandoned);
    waitReleasingPoolThread(described);
    return abandoned() ? QList<DuplicateGroup>() : groups;
}

/// The result of FingerprintTable::sortedDuplicates() for \a paths; empty if abandoned. A separate function,
/// so that its tables are freed before the groups are built: each group takes more than a kilobyte.
QList<QStringList> findEqualFiles(const QStringList &paths, const AnalysisCallbacks &callbacks)
{
    const std::optional<SizeClasses> classes = splitBySize(paths, callbacks.abandoned);
    if (!classes)
        return {};
    FingerprintQueue queue(*classes, callbacks.abandoned);
    FingerprintTable table(classes->candidates);
    while (!callbacks.abandoned()) {
        const std::optional<FingerprintedClass> next = queue.takeNext();
        if (!next)
            return table.sortedDuplicates();
        qsizetype file = next->sizeClass.firstCandidate;
        qsizetype processed = next->sizeClass.smallerFiles;
        for (const FileHash &record : next->hashes) {
            if (!record.hash.isEmpty())
                table.insert(file, record.hash);
            ++file;
            callbacks.progress(progressPercent(++processed, paths.size()));
        }
        callbacks.duplicatesFound(table.duplicates());
    }
    return {};
}

} // namespace

QList<DuplicateGroup> findDuplicates(const QStringList &paths, const AnalysisCallbacks &callbacks)
{
    QList<QStringList> equalFiles = findEqualFiles(paths, callbacks);
    returnFreedMemory();
    return makeGroups(std::move(equalFiles), callbacks.abandoned);
}
