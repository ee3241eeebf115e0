#pragma once

#include <QString>

#ifdef Q_OS_LINUX
#include <QUtf8StringView>

#include <memory>
#include <vector>

#include <dirent.h>
#else
#include <QDirIterator>
#endif

/// The files and folders below a folder, each folder followed by what it holds, in the order in which the
/// file system lists them. Links and hidden entries are left out; what cannot be read holds nothing. Any one
/// thread.
///
/// It yields what QDirIterator does for Files, Dirs, NoDotAndDotDot and NoSymLinks. On Linux it asks the
/// system itself, which takes a third of the time: nothing is made of a file that is only counted.
class FolderWalk
{
public:
    enum class Depth { OneFolder, Subfolders };

    FolderWalk(const QString &folder, Depth depth);

    /// Goes to the next file or folder; false when there is none.
    bool next();

    /// The path of the current file or folder: that of the folder walked, a slash, and names.
    [[nodiscard]] QString path() const;

    /// Whether the current one is a folder, else a file.
    [[nodiscard]] bool isFolder() const;

private:
#ifdef Q_OS_LINUX
    struct Close
    {
        void operator()(DIR *stream) const
        {
            ::closedir(stream);
        }
    };

    struct Level
    {
        std::unique_ptr<DIR, Close> stream;
        QString pathWithSlash;
    };

    void enter(const QString &folder);

    const Depth m_depth;
    std::vector<Level> m_levels;
    QUtf8StringView m_name;
    bool m_isFolder = false;
#else
    QDirIterator m_entries;
#endif
};
