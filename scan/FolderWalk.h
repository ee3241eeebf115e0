#pragma once

#include "scan/AbandonCheck.h"
#include "scan/FolderEntries.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// Iterates depth-first over the files in some folders and their subfolders. The entries of each folder come
/// in the order of FolderEntries, with the files of a subfolder in its place. Not thread-safe.
///
/// Only one folder is open at a time: before the walk enters a subfolder, it reads the rest of the current
/// folder into memory and closes it. A deep tree therefore needs one descriptor, and a folder without
/// subfolders is never held in memory.
class FolderWalk
{
public:
    /// \a abandoned is called for every entry; true ends the walk.
    FolderWalk(const QStringList &folders, AbandonCheck abandoned);
    Q_DISABLE_COPY_MOVE(FolderWalk)

    /// The path of the next file; nothing at the end of the walk.
    [[nodiscard]] std::optional<QString> next();

private:
    struct Entry
    {
        QString path;
        bool isFolder;
    };

    /// The remaining entries of a closed folder.
    struct Level
    {
        std::vector<Entry> entries = {};
        std::size_t next = 0;
    };

    [[nodiscard]] std::optional<Entry> takeEntry();
    void readRest();

    const AbandonCheck m_abandoned;
    /// The closed folders that contain the open one, outermost first.
    std::vector<Level> m_levels;
    std::optional<FolderEntries> m_open;
};
