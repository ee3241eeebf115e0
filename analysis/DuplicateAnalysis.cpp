#include "analysis/DuplicateAnalysis.h"

#include "analysis/FileHash.h"
#include "analysis/PoolThreadRelease.h"
#include "scan/FileCategories.h"

#include <QFileInfo>
#include <QHash>
#include <QMap>
#include <QThreadPool>
#include <QtConcurrentMap>

#include <algorithm>
#include <deque>

namespace {

using SizeClasses = QMap<qint64, QList<QString>>;

/// Starting a map-reduce and waiting for it costs about 50 to 100 us. With this many size classes under way
/// at once the wait overlaps with work.
constexpr std::size_t classesInFlight = 32;

SizeClasses splitBySize(const QList<QString> &paths, const std::function<bool()> &abandoned)
{
    const auto fileSize = [&abandoned](const QString &path) {
        return abandoned() ? qint64(0) : QFileInfo(path).size();
    };
    QFuture<qint64> future = QtConcurrent::mapped(QThreadPool::globalInstance(), paths, fileSize);
    waitReleasingPoolThread(future);

    const QList<qint64> sizes = future.results();
    SizeClasses classes;
    for (qsizetype i = 0; i < paths.size(); ++i)
        classes[sizes.at(i)].append(paths.at(i));
    return classes;
}

/// Fingerprints the size classes of two or more files in ascending order of size, a few classes ahead of the
/// reader.
class FingerprintQueue
{
public:
    FingerprintQueue(const SizeClasses &classes, std::function<bool()> abandoned)
        : m_abandoned(std::move(abandoned))
        , m_next(classes.cbegin())
        , m_end(classes.cend())
    {
    }

    /// Nothing of an abandoned run may go on behind its caller's back.
    ~FingerprintQueue()
    {
        for (QFuture<QList<FileHash>> &hashes : m_inFlight) {
            hashes.cancel();
            waitReleasingPoolThread(hashes);
        }
    }
    Q_DISABLE_COPY_MOVE(FingerprintQueue)

    /// The fingerprints of the next size class of two or more files; there must be one.
    QList<FileHash> takeNextClass()
    {
        for (; m_next != m_end && m_inFlight.size() < classesInFlight; ++m_next) {
            if (m_next->size() >= 2)
                m_inFlight.push_back(startComputingHashes(*m_next, m_abandoned));
        }
        QFuture<QList<FileHash>> hashes = std::move(m_inFlight.front());
        m_inFlight.pop_front();
        waitReleasingPoolThread(hashes);
        return hashes.takeResult();
    }

private:
    const std::function<bool()> m_abandoned;
    SizeClasses::const_iterator m_next;
    const SizeClasses::const_iterator m_end;
    std::deque<QFuture<QList<FileHash>>> m_inFlight;
};

/// Paths by fingerprint, one table for the whole run: files of different sizes can share a fingerprint.
class FingerprintTable
{
public:
    void insert(const FileHash &file)
    {
        QList<QString> &copies = m_paths[file.hash];
        copies.append(file.filePath);
        // The second copy makes the first one a duplicate as well.
        if (copies.size() >= 2)
            m_duplicates += copies.size() == 2 ? 2 : 1;
    }

    /// Files held by fingerprints of two or more files.
    [[nodiscard]] qsizetype duplicates() const
    {
        return m_duplicates;
    }

    /// The paths of each fingerprint of two or more files, in ascending byte order of the fingerprints.
    [[nodiscard]] QList<QList<QString>> sortedDuplicates() const
    {
        // Most fingerprints have one file only. To keep all in order from the start would cost more than the
        // sort.
        QMap<QByteArray, QList<QString>> sorted;
        for (auto entry = m_paths.cbegin(); entry != m_paths.cend(); ++entry) {
            if (entry->size() >= 2)
                sorted.insert(entry.key(), *entry);
        }
        return sorted.values();
    }

private:
    QHash<QByteArray, QList<QString>> m_paths;
    qsizetype m_duplicates = 0;
};

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

QList<DuplicateGroup> makeGroups(
    const QList<QList<QString>> &duplicates, const std::function<bool()> &abandoned)
{
    QList<DuplicateGroup> groups(duplicates.size());
    for (qsizetype i = 0; i < groups.size(); ++i)
        groups[i].files = duplicates.at(i);
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
/// abandoned. Its tables are gone by the time that groups are made: each group's set of ticks takes more than
/// a kilobyte.
QList<QList<QString>> findEqualFiles(const QList<QString> &paths, const AnalysisCallbacks &callbacks)
{
    const SizeClasses classes = splitBySize(paths, callbacks.abandoned);
    FingerprintQueue fingerprints(classes, callbacks.abandoned);
    FingerprintTable table;
    AnalysisProgress progress(paths.size());
    for (const QList<QString> &members : classes) {
        if (callbacks.abandoned())
            return {};
        if (members.size() < 2) {
            progress.add(members.size());
            continue;
        }
        for (const FileHash &file : fingerprints.takeNextClass()) {
            if (!file.hash.isEmpty())
                table.insert(file);
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
    return makeGroups(findEqualFiles(paths, callbacks), callbacks.abandoned);
}
