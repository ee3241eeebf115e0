#include "scan/FileCollection.h"

#include "scan/FileCategories.h"
#include "scan/FileCount.h"
#include "scan/ReadAheadWalk.h"
#include "scan/SkipRules.h"

#include <QElapsedTimer>

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): that is what they are for.
std::atomic<qint32> scannedFileCount{0};
std::atomic<qint32> acceptedFileCount{0};
std::atomic<qint32> lastReportedCount{0};
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

namespace {

constexpr qint32 reportEveryFiles = 100;
constexpr qint64 reportEveryMilliseconds = 800;

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
    // What takes files without a suffix takes all, and a suffix is dearer to come by than it looks.
    const bool takesAll = collectionAccepts(QString(), options.fileTypes);
    SkipRules rules(options, folders);
    ReportThrottle throttle;
    ReadAheadWalk files(folders, callbacks.abandoned);
    while (const std::optional<QString> path = files.next()) {
        if (rules.skip(*path))
            continue;
        const qint32 scanned = ++scannedFileCount;
        if (takesAll || collectionAccepts(lowerCaseSuffix(*path), options.fileTypes)) {
            ++acceptedFileCount;
            accepted.append(*path);
        }
        if (throttle.isDue(scanned))
            callbacks.progress(*path, percentOf(scanned, total));
    }
    // It stays for the whole analysis.
    accepted.squeeze();
    return accepted;
}
