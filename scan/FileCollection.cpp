#include "scan/FileCollection.h"

#include "scan/FileCategories.h"
#include "scan/FolderWalk.h"
#include "scan/ReadAheadWalk.h"
#include "scan/SkipRules.h"

#include <QElapsedTimer>
#include <QThreadPool>
#include <QtConcurrentMap>

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): that is what they are for.
std::atomic<qint32> scannedFileCount{0};
std::atomic<qint32> acceptedFileCount{0};
std::atomic<qint32> lastReportedCount{0};
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

namespace {

constexpr qint32 reportEveryFiles = 100;
constexpr qint64 reportEveryMilliseconds = 800;

/// Calls \a visit for every file and every subfolder of \a folders, at the asked \a depth. False when \a
/// abandoned has ended it early. It is asked at folders too: without a file in it, the largest tree would be
/// one single step.
template <typename Visit>
bool walk(
    const QStringList &folders, FolderWalk::Depth depth, const std::function<bool()> &abandoned, Visit visit)
{
    for (const QString &folder : folders) {
        FolderWalk entries(folder, depth);
        while (entries.next()) {
            if (abandoned())
                return false;
            visit(entries);
        }
    }
    return true;
}

/// So many levels of folders have, as a rule, enough subfolders to keep every thread busy.
constexpr int levelsCountedOneByOne = 2;

/// Counts the files below \a folders. The number has no order to keep, so all cores may help.
///
/// On threads of its own: the global pool's other users, Qt's painting among them, would wait for as long as
/// the disk takes.
qint32 countFiles(const QStringList &folders, const std::function<bool()> &abandoned)
{
    qint32 total = 0;
    QStringList subtrees = folders;
    for (int level = 0; level < levelsCountedOneByOne; ++level) {
        QStringList subfolders;
        const bool finished =
            walk(subtrees, FolderWalk::Depth::OneFolder, abandoned, [&](const FolderWalk &entry) {
                if (entry.isFolder())
                    subfolders.append(entry.path());
                else
                    ++total;
            });
        if (!finished)
            return total;
        subtrees = std::move(subfolders);
    }
    const auto countBelow = [&abandoned](const QString &folder) {
        qint32 files = 0;
        // There can be tens of thousands of folders, and to open them all takes its time as well.
        if (abandoned())
            return files;
        walk({folder}, FolderWalk::Depth::Subfolders, abandoned, [&files](const FolderWalk &entry) {
            if (!entry.isFolder())
                ++files;
        });
        return files;
    };
    QThreadPool threads;
    QFuture<qint32> counts = QtConcurrent::mapped(&threads, subtrees, countBelow);
    counts.waitForFinished();
    for (const qint32 files : counts.results())
        total += files;
    return total;
}

/// Decides when a progress report is due.
class ReportThrottle
{
public:
    ReportThrottle()
    {
        m_sinceReport.start();
    }

    bool isDue(qint32 scanned)
    {
        if (scanned - lastReportedCount < reportEveryFiles &&
            m_sinceReport.elapsed() < reportEveryMilliseconds)
            return false;
        lastReportedCount = scanned;
        m_sinceReport.restart();
        return true;
    }

private:
    QElapsedTimer m_sinceReport;
};

int percentOf(qint32 scanned, qint32 total)
{
    return total > 0 ? static_cast<int>(qint64(scanned) * 100 / total) : 0;
}

} // namespace

QStringList collectFiles(
    const QStringList &folders, const ScanOptions &options, const CollectionCallbacks &callbacks)
{
    const qint32 total = countFiles(folders, callbacks.abandoned);
    callbacks.counted();
    scannedFileCount = 0;
    acceptedFileCount = 0;

    QStringList accepted;
    SkipRules rules(options);
    ReportThrottle throttle;
    ReadAheadWalk files(folders, callbacks.abandoned);
    while (const std::optional<QString> path = files.next()) {
        if (rules.skip(*path))
            continue;
        const qint32 scanned = ++scannedFileCount;
        if (collectionAccepts(lowerCaseSuffix(*path), options.fileTypes)) {
            ++acceptedFileCount;
            accepted.append(*path);
        }
        if (throttle.isDue(scanned))
            callbacks.progress(*path, percentOf(scanned, total));
    }
    return accepted;
}
