#include "scan/FileCount.h"

#include "scan/FolderEntries.h"

#include <QMutex>
#include <QMutexLocker>
#include <QThreadPool>
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

    /// The folder that was added last, which keeps the stock small; nothing when all are finished. Waits
    /// while those that are not may still hold some.
    std::optional<QString> take()
    {
        const QMutexLocker lock(&m_mutex);
        while (m_folders.isEmpty() && m_unfinished > 0)
            m_changed.wait(&m_mutex);
        return m_folders.isEmpty() ? std::nullopt : std::optional(m_folders.takeLast());
    }

    /// Says that a folder that was taken is finished, and what it holds.
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

} // namespace

qint32 countFiles(const QStringList &folders, const std::function<bool()> &abandoned)
{
    FolderStock stock(folders);
    std::atomic<qint32> total = 0;
    const auto countFolders = [&] {
        qint32 files = 0;
        while (const std::optional<QString> folder = stock.take()) {
            QStringList subfolders;
            // There can be tens of thousands of folders, and to open them all takes its time as well.
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
        total += files;
    };

    // Threads of its own: the global pool's other users, Qt's painting among them, would wait for as long as
    // the disk takes.
    QThreadPool threads;
    for (int i = 0; i < threads.maxThreadCount(); ++i)
        threads.start(countFolders);
    threads.waitForDone();
    return total;
}
