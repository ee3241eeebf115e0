#pragma once

#include <QString>

#ifdef Q_OS_LINUX
#include <QByteArrayView>

#include <memory>

#include <dirent.h>
#else
#include <QDirIterator>
#endif

/// What the paths of all entries of \a folder begin with: its own path with a slash at the end. An empty path
/// stays empty.
QString withSlash(const QString &folder);

/// Whether hidden files and folders are listed. On Unix their names begin with a dot.
enum class HiddenEntries { LeftOut, Listed };

/// The files and subfolders of one folder, in the order in which the file system lists them. Links (on
/// Windows also junctions) and names that would not lead back to their entries are left out. Any one thread.
///
/// It yields what QDirIterator does for Files, Dirs, NoDotAndDotDot and NoSymLinks. On Linux it asks the
/// system itself: that takes a third of the time, and QDirIterator drops a U+FEFF at the start of a name.
class FolderEntries
{
public:
    explicit FolderEntries(const QString &folder, HiddenEntries hidden = HiddenEntries::LeftOut);

    /// Goes to the next file or subfolder; false when there is none or when the folder cannot be read
    /// further.
    bool next();

    /// The path of the current one: that of the folder, a slash, and its name.
    [[nodiscard]] QString path() const;

    /// Whether the current one is a folder, else a file.
    [[nodiscard]] bool isFolder() const;

    /// Why the folder could not be opened or read to its end, in the system's own words; empty when it could.
    /// Ask after next() has returned false.
    [[nodiscard]] QString error() const;

    /// Files and folders left out so far because of their names.
    [[nodiscard]] qsizetype undecodableNames() const;

#ifdef Q_OS_LINUX
    /// The open folder and the current one's name in it, for fstatat() and statx(). Valid until next() is
    /// called.
    [[nodiscard]] int folderDescriptor() const;
    [[nodiscard]] const char *rawName() const;
#else
    /// What the listing tells of the current one.
    [[nodiscard]] QFileInfo fileInfo() const;
#endif

private:
#ifdef Q_OS_LINUX
    struct Close
    {
        void operator()(DIR *stream) const
        {
            ::closedir(stream);
        }
    };

    [[nodiscard]] bool isLeftOut(const char *name) const;

    const std::unique_ptr<DIR, Close> m_stream;
    /// What errno said; 0 when nothing failed.
    int m_error;
    const QString m_folderWithSlash;
    const HiddenEntries m_hidden;
    QByteArrayView m_name;
    bool m_isFolder = false;
#else
    const QString m_folder;
    QDirIterator m_entries;
#endif
    qsizetype m_undecodableNames = 0;
};
