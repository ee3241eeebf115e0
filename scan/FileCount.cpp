#include "scan/FileCount.h"

#include "scan/FolderEntries.h"
#include "scan/ScanThreads.h"
#include "scan/WorkStock.h"

#include <QSemaphore>
#include <QThread>

#include <atomic>
#include <optional>

namespace {

/// Takes folders from \a stock until none are left; the number of their files.
qint32 countFilesOf(WorkStock<QString> &stock, const std::function<bool()> &abandoned)
{
    qint32 files = 0;
    while (const std::optional<QString> folder = stock.take()) {
        // An abandoned count opens none of the folders that are left: there can be tens of thousands.
        if (!abandoned()) {
            FolderEntries entries(*folder);
            while (entries.next() && !abandoned()) {
                if (entries.isFolder())
                    stock.add(entries.path());
                else
                    ++files;
            }
        }
        stock.finish();
    }
    return files;
}

} // namespace

qint32 countFiles(const QStringList &folders, const std::function<bool()> &abandoned)
{
    WorkStock<QString> stock(std::vector<QString>(folders.cbegin(), folders.cend()));
    std::atomic<qint32> total = 0;
    QSemaphore finished;
    // Only threads that are free now: the current one may be one of them, and to wait for another's turn
    // might never end.
    int helpers = 0;
    while (helpers < QThread::idealThreadCount() - 1 && scanThreads().tryStart([&] {
        total += countFilesOf(stock, abandoned);
        finished.release();
    }))
        ++helpers;
    total += countFilesOf(stock, abandoned);
    finished.acquire(helpers);
    return total;
}
