#include "scan/FileCount.h"

#include "scan/FolderEntries.h"
#include "scan/ScanThreads.h"

#include <QMutex>
#include <QMutexLocker>
#include <QSemaphore>
#include <QThread>
#include <QWaitCondition>

#include <atomic>
#include <optional>

namespace {

/// Folders that several threads take from and add to.
class FolderStock
{
public:
    explicit FolderStock(const QStringList &folders)
        : m_folders(folders)
        , m_unfinished(folders.size())
    {
    }

    /// The folder that was added last, which keeps the stock small; nothing when all folders are finished.
    /// Waits while folders in work may still add some.
    std::optional<QString> take()
    {
        const QMutexLocker lock(&m_mutex);
        while (m_folders.isEmpty() && m_unfinished > 0)
            m_changed.wait(&m_mutex);
        return m_folders.isEmpty() ? std::nullopt : std::optional(m_folders.takeLast());
    }

    /// Ends the work on a folder that was taken and adds its subfolders.
    void finish(const QStringList &subfolders)
    {
        const QMutexLocker lock(&m_mutex);
        m_folders += subfolders;
        m_unfinished += subfolders.size() - 1;
        if (!subfolders.isEmpty() || m_unfinished == 0)
            m_changed.wakeAll();
    }

private:
    QMutex m_mutex;
    QWaitCondition m_changed;
    QStringList m_folders;
    qsizetype m_unfinished;
};

/// Takes folders from \a stock until none are left; the number of their files.
qint32 countFilesOf(FolderStock &stock, const std::function<bool()> &abandoned)
{
    qint32 files = 0;
    while (const std::optional<QString> folder = stock.take()) {
        QStringList subfolders;
        // An abandoned count opens none of the folders that are left: there can be tens of thousands.
        if (!abandoned()) {
            FolderEntries entries(*folder);
            while (entries.next() && !abandoned()) {
                if (entries.isFolder())
                    subfolders.append(entries.path());
                else
                    ++files;
            }
        }
        stock.finish(subfolders);
    }
    return files;
}

} // namespace

qint32 countFiles(const QStringList &folders, const std::function<bool()> &abandoned)
{
    FolderStock stock(folders);
    std::atomic<qint32> total = 0;
    QSemaphore finished;
    // Only threads that are free now: the current one may be one of them, and to wait for another's turn
    // could take for ever.
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
