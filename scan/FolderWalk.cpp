#include "scan/FolderWalk.h"

#include <utility>

FolderWalk::FolderWalk(const QStringList &folders, AbandonCheck abandoned)
    : m_abandoned(std::move(abandoned))
{
    Level outermost;
    for (const QString &folder : folders)
        outermost.entries.push_back({folder, true});
    m_levels.push_back(std::move(outermost));
}

std::optional<QString> FolderWalk::next()
{
    while (std::optional<Entry> entry = takeEntry()) {
        if (!entry->isFolder)
            return std::move(entry->path);
        if (m_open)
            readRest();
        m_open.emplace(entry->path);
    }
    return std::nullopt;
}

/// The next entry of the innermost folder that has entries left; nothing at the end of the walk.
std::optional<FolderWalk::Entry> FolderWalk::takeEntry()
{
    if (m_abandoned())
        return std::nullopt;
    if (m_open && m_open->next())
        return Entry{m_open->path(), m_open->isFolder()};
    m_open.reset();
    while (!m_levels.empty()) {
        Level &level = m_levels.back();
        if (level.next < level.entries.size())
            return std::move(level.entries[level.next++]);
        m_levels.pop_back();
    }
    return std::nullopt;
}

/// Moves the remaining entries of the open folder to a new level.
void FolderWalk::readRest()
{
    Level rest;
    while (!m_abandoned() && m_open->next())
        rest.entries.push_back({m_open->path(), m_open->isFolder()});
    m_levels.push_back(std::move(rest));
}
