#pragma once

#include <QMutex>
#include <QStringList>
#include <QThreadPool>
#include <QWaitCondition>

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <vector>

/// The files below some folders, one folder after the other: each as FolderEntries lists it, with what a
/// subfolder holds in that subfolder's place. Several threads read folders ahead of the one that takes the
/// files, which is the only one to call.
///
/// On threads of its own: the global pool's other users, Qt's painting among them, would wait for as long as
/// the disk takes.
class ReadAheadWalk
{
public:
    /// \a abandoned is asked for every file and folder, on any of the threads; once it is true the walk
    /// ends.
    ReadAheadWalk(const QStringList &folders, std::function<bool()> abandoned);
    /// Waits for the folders that are being read, which end early only when the walk is abandoned.
    ~ReadAheadWalk();
    Q_DISABLE_COPY_MOVE(ReadAheadWalk)

    /// The path of the next file; nothing at the end. Waits for the disk, but not for the rest of a folder.
    std::optional<QString> next();

private:
    struct Folder;
    using FolderPointer = std::shared_ptr<Folder>;

    /// A file, or a folder whose files come in its place.
    struct Entry
    {
        QString file;
        FolderPointer folder = {};
    };
    using Entries = std::vector<Entry>;

    /// Its entries are handed over in portions, so that nobody waits for a folder of a million files.
    struct Folder
    {
        QString path;
        Entries portion = {};
        bool isTaken = false;
        bool isComplete = false;
        /// Where it stands in m_unread until it is complete.
        std::list<FolderPointer>::iterator place = {};
    };

    /// A folder on the way to the current file, and what was handed over of it last.
    struct Level
    {
        FolderPointer folder = {};
        Entries entries = {};
        std::size_t next = 0;
    };

    static void moveFolders(Entries &entries, std::vector<FolderPointer> &folders);
    bool takePortion(Level &level);
    void readFolders();
    FolderPointer waitForUnreadFolder();
    void read(Folder &folder);
    void handOver(Folder &folder, Entries &entries, bool isComplete);

    const std::function<bool()> m_abandoned;
    std::vector<Level> m_levels;

    // What the threads share, under the mutex.
    QMutex m_mutex;
    QWaitCondition m_readerCanGoOn;
    QWaitCondition m_somethingHasCome;
    /// In the order of the walk. Those that are being read stay, to keep the place for what they hold.
    std::list<FolderPointer> m_unread;
    /// What next() waits for.
    FolderPointer m_wanted;
    std::size_t m_entriesAhead = 0;
    bool m_isFarEnoughAhead = false;
    bool m_isEnding = false;

    QThreadPool m_threads;
};
