#pragma once

#include "scan/FolderEntries.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

/// The files below some folders, one folder after the other: each as FolderEntries lists it, with what a
/// subfolder holds in that subfolder's place. Any one thread.
///
/// Only the innermost folder is open: before the walk goes into a subfolder, it reads the rest of the folder
/// around it and closes it. So a folder without subfolders is never held in memory, and a deep tree takes no
/// more than one descriptor.
class FolderWalk
{
public:
    /// \a abandoned is asked for every entry; once it is true the walk ends.
    FolderWalk(const QStringList &folders, std::function<bool()> abandoned);
    Q_DISABLE_COPY_MOVE(FolderWalk)

    /// The path of the next file; nothing at the end.
    [[nodiscard]] std::optional<QString> next();

private:
    struct Entry
    {
        QString path;
        bool isFolder;
    };

    /// What is left of a folder on the way to the current file.
    struct Level
    {
        std::vector<Entry> entries = {};
        std::size_t next = 0;
    };

    std::optional<Entry> takeEntry();
    void readRest();

    const std::function<bool()> m_abandoned;
    /// The folders around the open one, the outermost first.
    std::vector<Level> m_levels;
    std::optional<FolderEntries> m_open;
};
