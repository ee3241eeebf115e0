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

/// Converts the number of processed files to the part of the progress bar that the analysis uses.
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

/// The result of FingerprintTable::sortedDuplicates() for \a paths; empty if abandoned. A function of its own
/// so that its tables are freed before the groups are built: each group takes more than a kilobyte.
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
