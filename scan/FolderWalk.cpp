#include "scan/FolderWalk.h"

#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_LINUX

#include <optional>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

/// Whether \a entry is a folder, or nothing when it is neither a folder nor a file.
std::optional<bool> asksForFolder(DIR *stream, const dirent &entry)
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

FolderWalk::FolderWalk(const QString &folder, Depth depth)
    : m_depth(depth)
{
    enter(folder);
}

void FolderWalk::enter(const QString &folder)
{
    if (DIR *const stream = ::opendir(QFile::encodeName(folder).constData()))
        m_levels.push_back(
            {std::unique_ptr<DIR, Close>(stream), folder.endsWith(u'/') ? folder : folder + u'/'});
}

bool FolderWalk::next()
{
    if (m_isFolder && m_depth == Depth::Subfolders)
        enter(path());
    m_isFolder = false;
    while (!m_levels.empty()) {
        DIR *const stream = m_levels.back().stream.get();
        const dirent *const entry = ::readdir(stream);
        if (!entry) {
            m_levels.pop_back();
            continue;
        }
        const bool isHidden = entry->d_name[0] == '.';
        if (isHidden)
            continue;
        m_name = entry->d_name;
        const std::optional<bool> isFolder = asksForFolder(stream, *entry);
        // A name that is no text could not be told back to the system.
        if (!isFolder || !m_name.isValidUtf8())
            continue;
        m_isFolder = *isFolder;
        return true;
    }
    return false;
}

QString FolderWalk::path() const
{
    return m_levels.back().pathWithSlash + m_name.toString();
}

bool FolderWalk::isFolder() const
{
    return m_isFolder;
}

#else

namespace {

constexpr QDir::Filters filters = QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks;

} // namespace

FolderWalk::FolderWalk(const QString &folder, Depth depth)
    : m_entries(folder, filters,
          depth == Depth::Subfolders ? QDirIterator::Subdirectories : QDirIterator::NoIteratorFlags)
{
}

bool FolderWalk::next()
{
    const bool exists = m_entries.hasNext();
    if (exists)
        m_entries.next();
    return exists;
}

QString FolderWalk::path() const
{
    return m_entries.filePath();
}

bool FolderWalk::isFolder() const
{
    return m_entries.fileInfo().isDir();
}

#endif
