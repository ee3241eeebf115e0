#include "scan/ReadAheadWalk.h"

#include "scan/FolderEntries.h"

#include <QDeadlineTimer>
#include <QMutexLocker>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

using std::chrono_literals::operator""ms;

namespace {

/// Entries of one folder that are handed over at a time.
constexpr std::size_t portionSize = 256;
/// So much is read ahead, a megabyte of paths: enough to keep all threads busy while one file is
/// looked at.
constexpr std::size_t entriesAheadAtMost = 4'096;
/// Whoever waits for a folder looks for it again by itself. To be woken for each one costs more than to read
/// it.
constexpr auto lookAgainAfter = 1ms;

} // namespace

ReadAheadWalk::ReadAheadWalk(const QStringList &folders, std::function<bool()> abandoned)
    : m_abandoned(std::move(abandoned))
{
    Level all;
    for (const QString &folder : folders)
        all.entries.push_back({{}, std::make_shared<Folder>(Folder{folder})});
    for (const Entry &entry : all.entries)
        entry.folder->place = m_unread.insert(m_unread.end(), entry.folder);
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
    std::vector<FolderPointer> folders(m_unread.cbegin(), m_unread.cend());
    m_unread.clear();
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
    while (!m_levels.empty() && !m_abandoned()) {
        Level &level = m_levels.back();
        if (level.next == level.entries.size()) {
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
    if (folder.portion.empty() && !folder.isComplete) {
        m_wanted = level.folder;
        m_readerCanGoOn.wakeOne();
    }
    while (folder.portion.empty() && !folder.isComplete)
        m_somethingHasCome.wait(&m_mutex, QDeadlineTimer(lookAgainAfter));
    m_wanted.reset();
    level.entries = std::exchange(folder.portion, {});
    level.next = 0;
    m_entriesAhead -= level.entries.size();
    // Not before there is room for some more: to be woken for each folder costs more than to read it.
    if (m_isFarEnoughAhead && m_entriesAhead < entriesAheadAtMost / 2) {
        m_isFarEnoughAhead = false;
        m_readerCanGoOn.wakeAll();
    }
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
        // As many as there are threads can be taken.
        const auto next = std::find_if(
            m_unread.cbegin(), m_unread.cend(), [](const FolderPointer &folder) { return !folder->isTaken; });
        if (next != m_unread.cend() && !m_isFarEnoughAhead) {
            (*next)->isTaken = true;
            return *next;
        }
        m_readerCanGoOn.wait(&m_mutex);
    }
    return nullptr;
}

void ReadAheadWalk::read(Folder &folder)
{
    Entries entries;
    FolderEntries listed(folder.path);
    while (listed.next() && !m_abandoned()) {
        if (listed.isFolder())
            entries.push_back({{}, std::make_shared<Folder>(Folder{listed.path()})});
        else
            entries.push_back({listed.path()});
        if (entries.size() == portionSize)
            handOver(folder, entries, false);
    }
    handOver(folder, entries, true);
}

void ReadAheadWalk::handOver(Folder &folder, Entries &entries, bool isComplete)
{
    const QMutexLocker lock(&m_mutex);
    bool hasFolders = false;
    for (const Entry &entry : entries) {
        if (entry.folder) {
            entry.folder->place = m_unread.insert(folder.place, entry.folder);
            hasFolders = true;
        }
    }
    if (isComplete)
        m_unread.erase(folder.place);
    if (hasFolders)
        m_readerCanGoOn.wakeAll();

    m_entriesAhead += entries.size();
    if (m_entriesAhead >= entriesAheadAtMost)
        m_isFarEnoughAhead = true;
    if (folder.portion.empty())
        folder.portion.swap(entries);
    else
        std::move(entries.begin(), entries.end(), std::back_inserter(folder.portion));
    entries.clear();
    folder.isComplete = isComplete;
    // Else next() can leave the readers to themselves for a while.
    if (m_isFarEnoughAhead || m_unread.empty())
        m_somethingHasCome.wakeOne();
}
