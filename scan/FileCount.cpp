#include "scan/FileCount.h"

#include "scan/FolderEntries.h"
#include "scan/ScanThreads.h"
#include "scan/WorkQueue.h"

#include <QSemaphore>
#include <QThread>

#include <atomic>
#include <optional>

namespace {

/// Reads folders from \a queue until all are read. Returns the number of files in those that it has read.
qint32 countFilesOf(WorkQueue<QString> &queue, const AbandonCheck &abandoned)
{
    qint32 files = 0;
    while (const std::optional<QString> folder = queue.take()) {
        // The queue can hold tens of thousands of folders: do not open them once abandoned.
        if (!abandoned()) {
            FolderEntries entries(*folder);
            while (entries.next() && !abandoned()) {
                if (entries.isFolder())
                    queue.add(entries.path());
                else
                    ++files;
            }
        }
        queue.finish();
    }
    return files;
}

} // namespace

qint32 countFiles(const QStringList &folders, const AbandonCheck &abandoned)
{
    WorkQueue<QString> queue(std::vector<QString>(folders.cbegin(), folders.cend()));
    std::atomic<qint32> total = 0;
    QSemaphore finished;
    const auto help = [&] {
        total += countFilesOf(queue, abandoned);
        finished.release();
    };
    // Only free threads: the current thread may be one of the pool's, and waiting for others could deadlock.
    const int maxHelpers = QThread::idealThreadCount() - 1;
    int helpers = 0;
    while (helpers < maxHelpers && scanThreads().tryStart(help))
        ++helpers;
    total += countFilesOf(queue, abandoned);
    finished.acquire(helpers);
    return total;
}
