#include "scan/FileCollection.h"

#include "scan/FileCategories.h"
#include "scan/FileCount.h"
#include "scan/FolderWalk.h"
#include "scan/ScanProgress.h"
#include "scan/SkipRules.h"

#include <QElapsedTimer>

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): shared by all scans.
std::atomic<qint32> scannedFileCount{0};
std::atomic<qint32> acceptedFileCount{0};
std::atomic<qint32> lastReportedCount{0};
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

QStringList collectFiles(
    const QStringList &folders, const ScanOptions &options, const CollectionCallbacks &callbacks)
{
    const qint32 total = countFiles(folders, callbacks.abandoned);
    callbacks.counted();
    scannedFileCount = 0;
    acceptedFileCount = 0;

    QStringList accepted;
    // If files without a suffix are accepted, all are: skip the costly suffix lookup.
    const bool acceptsAll = collectionAccepts(QString(), options.fileTypes);
    SkipRules rules(options, folders);
    ReportThrottle throttle(lastReportedCount);
    QElapsedTimer clock;
    clock.start();
    FolderWalk files(folders, callbacks.abandoned);
    while (const std::optional<QString> path = files.next()) {
        if (rules.skip(*path))
            continue;
        const qint32 scanned = ++scannedFileCount;
        if (acceptsAll || collectionAccepts(lowerCaseSuffix(*path), options.fileTypes)) {
            ++acceptedFileCount;
            accepted.append(*path);
        }
        if (throttle.isDue(scanned, clock.elapsed()))
            callbacks.progress(*path, scannedPercent(scanned, total));
    }
    // Saves memory: the list exists until the end of the analysis.
    accepted.squeeze();
    return accepted;
}
