#include "scan/FileCount.h"

#include "scan/FolderEntries.h"
#include "scan/ScanThreads.h"
#include "scan/WorkStock.h"

#include <QSemaphore>
#include <QThread>

#include <atomic>
#include <optional>

namespace {

/// Reads folders from \a stock until all are read. Returns the number of files in those that it has read.
qint32 countFilesOf(WorkStock<QString> &stock, const std::function<bool()> &abandoned)
{
    qint32 files = 0;
    while (const std::optional<QString> folder = stock.take()) {
        // The queue can hold tens of thousands of folders: do not open them once abandoned.
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
    // Only free threads: the current thread may be one of the pool's, and waiting for others could deadlock.
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
