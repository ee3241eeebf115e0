#include "analysis/DuplicateAnalysis.h"

#include "analysis/FingerprintQueue.h"
#include "analysis/FingerprintTable.h"
#include "analysis/PoolThreadRelease.h"
#include "analysis/SizeClasses.h"
#include "scan/FileCategories.h"

#include <QFileInfo>
#include <QThreadPool>
#include <QtConcurrentMap>

#include <algorithm>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

/// Turns counted files into the analysis's share of the progress bar.
class AnalysisProgress
{
public:
    explicit AnalysisProgress(qsizetype total)
        : m_total(std::max<qsizetype>(total, 1))
    {
    }

    void add(qsizetype files)
    {
        m_processed += files;
    }

    [[nodiscard]] int percent() const
    {
        return static_cast<int>(33 + m_processed * 33 / m_total);
    }

private:
    const qint64 m_total;
    qint64 m_processed = 0;
};

/// Gives the tables' memory back to the system. glibc keeps what a thread has freed for that thread, but
/// other threads make the groups.
void returnFreedMemory()
{
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}

/// Fills in what follows from the group's files.
void describeGroup(DuplicateGroup &group)
{
    const QFileInfo first(group.files.first());
    group.fileName = first.fileName();
    group.size = first.size();
    group.modified = first.fileTime(QFileDevice::FileModificationTime);
    group.category = categoryOf(lowerCaseSuffix(group.files.first()));
    markAllButKeptCopy(group);
}

QList<DuplicateGroup> makeGroups(QList<QList<QString>> duplicates, const std::function<bool()> &abandoned)
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

/// The paths of each fingerprint of two or more files, in ascending byte order of the fingerprints; none when
/// abandoned. Frees its tables before groups are made: each group's set of marked files takes more than a
/// kilobyte.
QList<QList<QString>> findEqualFiles(const QList<QString> &paths, const AnalysisCallbacks &callbacks)
{
    const SizeClasses classes = splitBySize(paths, callbacks.abandoned);
    FingerprintQueue fingerprints(classes, callbacks.abandoned);
    FingerprintTable table(classes.candidates);
    AnalysisProgress progress(paths.size());
    qsizetype file = 0;
    for (const qsizetype count : classes.counts) {
        if (callbacks.abandoned())
            return {};
        if (count < 2) {
            progress.add(count);
            continue;
        }
        for (const qsizetype end = file + count; file < end; ++file) {
            if (const QByteArray fingerprint = fingerprints.takeNext(); !fingerprint.isEmpty())
                table.insert(file, fingerprint);
            progress.add(1);
            callbacks.progress(progress.percent());
        }
        callbacks.duplicatesFound(table.duplicates());
    }
    return table.sortedDuplicates();
}

} // namespace

QList<DuplicateGroup> findDuplicates(const QList<QString> &paths, const AnalysisCallbacks &callbacks)
{
    QList<QList<QString>> equalFiles = findEqualFiles(paths, callbacks);
    returnFreedMemory();
    return makeGroups(std::move(equalFiles), callbacks.abandoned);
}
