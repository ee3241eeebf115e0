#include "scan/FolderEntries.h"

#include <QFile>
#include <QFileInfo>

QString withSlash(const QString &folder)
{
    return folder.isEmpty() || folder.endsWith(u'/') ? folder : folder + u'/';
}

#ifdef Q_OS_LINUX

#include <optional>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

/// Whether \a entry is a folder, or nothing when it is neither a folder nor a file.
std::optional<bool> isFolderEntry(DIR *stream, const dirent &entry)
{
    unsigned int type = entry.d_type;
    if (struct stat facts = {};
        type == DT_UNKNOWN && ::fstatat(::dirfd(stream), entry.d_name, &facts, AT_SYMLINK_NOFOLLOW) == 0)
        type = IFTODT(facts.st_mode);
    if (type != DT_DIR && type != DT_REG)
        return std::nullopt;
    return type == DT_DIR;
}

} // namespace

FolderEntries::FolderEntries(const QString &folder)
    : m_stream(::opendir(QFile::encodeName(folder).constData()))
    , m_folderWithSlash(withSlash(folder))
{
}

bool FolderEntries::next()
{
    while (const dirent *const entry = m_stream ? ::readdir(m_stream.get()) : nullptr) {
        const bool isHidden = entry->d_name[0] == '.';
        if (isHidden)
            continue;
        m_name = entry->d_name;
        const std::optional<bool> isFolder = isFolderEntry(m_stream.get(), *entry);
        // A name that is no text could not be told back to the system.
        if (!isFolder || !m_name.isValidUtf8())
            continue;
        m_isFolder = *isFolder;
        return true;
    }
    return false;
}

QString FolderEntries::path() const
{
    return m_folderWithSlash + m_name.toString();
}

bool FolderEntries::isFolder() const
{
    return m_isFolder;
}

#else

FolderEntries::FolderEntries(const QString &folder)
    : m_entries(folder, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks)
{
}

bool FolderEntries::next()
{
    const bool exists = m_entries.hasNext();
    if (exists)
        m_entries.next();
    return exists;
}

QString FolderEntries::path() const
{
    return m_entries.filePath();
}

bool FolderEntries::isFolder() const
{
    return m_entries.fileInfo().isDir();
}

#endif
