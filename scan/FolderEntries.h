#pragma once

#include <QString>

#if defined(Q_OS_LINUX)
#include <QByteArrayView>

#include <memory>

#include <dirent.h>
#elif defined(Q_OS_WIN)
#include <memory>
#else
#include <QDirIterator>
#endif

/// The path \a folder with one slash at its end; empty for an empty path.
[[nodiscard]] QString withSlash(const QString &folder);

/// Whether a listing includes hidden files and folders. On Unix these are names that begin with a dot.
enum class HiddenEntries { LeftOut, Listed };

#ifndef Q_OS_LINUX
/// The facts of a file that come with the listing of its folder.
struct ListedFacts
{
    /// Bytes.
    qint64 size = 0;
    /// Milliseconds since 1970-01-01 UTC. Without a creation time, both are the modification time.
    qint64 modified = 0;
    qint64 created = 0;
};
#endif

/// Iterates over the files and subfolders of one folder, in the order of the file system. Leaves out links,
/// on Windows also junctions, and names that scan/FileNames.h rejects. Not thread-safe.
///
/// Equivalent to QDirIterator with Files, Dirs, NoDotAndDotDot and NoSymLinks. On Linux it calls readdir()
/// itself, which takes a third of the time, and keeps a U+FEFF at the start of a name, which QDirIterator
/// drops. On Windows it calls FindNextFile() itself: QDirIterator opens every file to find out whether it is
/// a link, which the listing already says.
class FolderEntries
{
public:
    explicit FolderEntries(const QString &folder, HiddenEntries hidden = HiddenEntries::LeftOut);
    ~FolderEntries();
    Q_DISABLE_COPY_MOVE(FolderEntries)

    /// Advances to the next file or subfolder. Returns false at the end or on an error; see error().
    [[nodiscard]] bool next();

    /// The path of the current entry: the folder's path, a slash, and the name.
    [[nodiscard]] QString path() const;

    /// Whether the current entry is a folder; otherwise it is a file.
    [[nodiscard]] bool isFolder() const;

    /// The system's error message if the folder could not be opened or read to its end; otherwise empty.
    /// Valid once next() has returned false.
    [[nodiscard]] QString error() const;

    /// Number of files and folders left out so far because of their names.
    [[nodiscard]] qsizetype undecodableNames() const;

#ifdef Q_OS_LINUX
    /// The descriptor of the open folder and the name of the current entry, for fstatat() and statx(). Valid
    /// until the next call of next().
    [[nodiscard]] int folderDescriptor() const;
    [[nodiscard]] const char *rawName() const;
#else
    /// The facts of the current entry, which must be a file.
    [[nodiscard]] ListedFacts facts() const;
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
    /// errno of the failed call; 0 if none failed.
    int m_error;
    const QString m_folderWithSlash;
    const HiddenEntries m_hidden;
    QByteArrayView m_name;
    bool m_isFolder = false;
#elif defined(Q_OS_WIN)
    struct Search;

    [[nodiscard]] bool isLeftOut() const;

    const std::unique_ptr<Search> m_search;
    const QString m_folderWithSlash;
    const HiddenEntries m_hidden;
    QString m_name;
#else
    const QString m_folder;
    QDirIterator m_entries;
#endif
    qsizetype m_undecodableNames = 0;
};
