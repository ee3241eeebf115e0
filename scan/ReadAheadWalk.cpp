#include "scan/ReadAheadWalk.h"

#include "scan/FolderWalk.h"

#include <QMutexLocker>

#include <utility>

namespace {

/// Entries of one folder that are handed over at a time.
constexpr std::size_t portionSize = 256;
/// So much is read ahead, a megabyte of paths: enough to keep all threads busy while one file is
/// looked at.
constexpr std::size_t entriesAheadAtMost = 4'096;

} // namespace

ReadAheadWalk::ReadAheadWalk(const QStringList &folders, std::function<bool()> abandoned)
    : m_abandoned(std::move(abandoned))
{
    Level all;
    for (const QString &folder : folders)
        all.entries.push_back({{}, std::make_shared<Folder>(Folder{folder})});
    for (auto entry = all.entries.crbegin(); entry != all.entries.crend(); ++entry)
        m_unread.push_back(entry->folder);
    m_levels.push_back(std::move(all));
    for (int i = 0; i < m_threads.maxThreadCount(); ++i)
        m_threads.start([this] { readFolders(); });
}

ReadAheadWalk::~ReadAheadWalk()
{
    {
        const QMutexLocker lock(&m_mutex);
        m_isEnding = true;
        m_readerCanGoOn.wakeAll();
    }
    m_threads.waitForDone();

    // One after the other: folders that lie in each other would be freed in as many calls inside each other.
    std::vector<FolderPointer> folders = std::move(m_unread);
    for (Level &level : m_levels) {
        folders.push_back(std::move(level.folder));
        moveFolders(level.entries, folders);
    }
    while (!folders.empty()) {
        const FolderPointer folder = std::move(folders.back());
        folders.pop_back();
        if (folder)
            moveFolders(folder->portion, folders);
    }
}

/// Moves the folders of \a entries to the end of \a folders.
void ReadAheadWalk::moveFolders(Entries &entries, std::vector<FolderPointer> &folders)
{
    for (Entry &entry : entries) {
        if (entry.folder)
            folders.push_back(std::move(entry.folder));
    }
}

std::optional<QString> ReadAheadWalk::next()
{
    while (!m_levels.empty()) {
        Level &level = m_levels.back();
        if (level.next == level.entries.size()) {
            if (m_abandoned())
                return std::nullopt;
            if (!takePortion(level))
                m_levels.pop_back();
            continue;
        }
        Entry &entry = level.entries[level.next++];
        if (!entry.folder)
            return std::move(entry.file);
        m_levels.push_back({std::move(entry.folder)});
    }
    return std::nullopt;
}

/// Replaces what \a level has left; false when its folder has no more.
bool ReadAheadWalk::takePortion(Level &level)
{
    if (!level.folder)
        return false;
    const QMutexLocker lock(&m_mutex);
    Folder &folder = *level.folder;
    while (folder.portion.empty() && !folder.isComplete) {
        m_wanted = level.folder;
        m_readerCanGoOn.wakeOne();
        m_wantedHasCome.wait(&m_mutex);
    }
    m_wanted.reset();
    level.entries = std::exchange(folder.portion, {});
    level.next = 0;
    const bool wasFull = m_entriesAhead >= entriesAheadAtMost;
    m_entriesAhead -= level.entries.size();
    if (wasFull)
        m_readerCanGoOn.wakeAll();
    return !level.entries.empty();
}

void ReadAheadWalk::readFolders()
{
    while (const FolderPointer folder = waitForUnreadFolder())
        read(*folder);
}

/// Nothing when the walk ends.
ReadAheadWalk::FolderPointer ReadAheadWalk::waitForUnreadFolder()
{
    const QMutexLocker lock(&m_mutex);
    while (!m_isEnding) {
        // Whatever else was read ahead, the one that is waited for must be read.
        if (m_wanted && !m_wanted->isTaken) {
            m_wanted->isTaken = true;
            return m_wanted;
        }
        if (m_unread.empty() || m_entriesAhead >= entriesAheadAtMost) {
            m_readerCanGoOn.wait(&m_mutex);
            continue;
        }
        FolderPointer folder = std::move(m_unread.back());
        m_unread.pop_back();
        if (!std::exchange(folder->isTaken, true))
            return folder;
    }
    return nullptr;
}

void ReadAheadWalk::read(Folder &folder)
{
    Entries entries;
    std::vector<FolderPointer> subfolders;
    FolderWalk walk(folder.path, FolderWalk::Depth::OneFolder);
    while (walk.next() && !m_abandoned()) {
        if (walk.isFolder()) {
            subfolders.push_back(std::make_shared<Folder>(Folder{walk.path()}));
            entries.push_back({{}, subfolders.back()});
        } else {
            entries.push_back({walk.path()});
        }
        if (entries.size() == portionSize)
            handOver(folder, entries, false);
    }
    handOver(folder, entries, true);
    if (subfolders.empty())
        return;
    const QMutexLocker lock(&m_mutex);
    m_unread.insert(m_unread.end(), subfolders.crbegin(), subfolders.crend());
    m_readerCanGoOn.wakeAll();
}

void ReadAheadWalk::handOver(Folder &folder, Entries &entries, bool isComplete)
{
    const QMutexLocker lock(&m_mutex);
    m_entriesAhead += entries.size();
    if (folder.portion.empty())
        folder.portion = std::move(entries);
    else
        std::move(entries.begin(), entries.end(), std::back_inserter(folder.portion));
    entries.clear();
    folder.isComplete = isComplete;
    if (m_wanted.get() == &folder)
        m_wantedHasCome.wakeOne();
}
