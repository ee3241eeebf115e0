#include "scan/FolderEntries.h"

#include "scan/FileNames.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using Qt::Literals::StringLiterals::operator""_s;

QString withSlash(const QString &folder)
{
    return folder.isEmpty() || folder.endsWith(u'/') ? folder : folder + u'/';
}

qsizetype FolderEntries::undecodableNames() const
{
    return m_undecodableNames;
}

#if defined(Q_OS_LINUX)

#include <cerrno>
#include <cstring>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

/// Whether \a entry is a folder; nothing if it is neither a folder nor a regular file.
std::optional<bool> isFolderEntry(DIR *stream, const dirent &entry)
{
    unsigned int type = entry.d_type;
    const char *const name = entry.d_name;
    if (struct stat facts = {};
        type == DT_UNKNOWN && ::fstatat(::dirfd(stream), name, &facts, AT_SYMLINK_NOFOLLOW) == 0)
        type = IFTODT(facts.st_mode);
    if (type != DT_DIR && type != DT_REG)
        return std::nullopt;
    return type == DT_DIR;
}

/// The next entry; null at the end, or after a failure, which sets \a error.
const dirent *nextEntry(DIR *stream, int &error)
{
    errno = 0;
    const dirent *const entry = ::readdir(stream);
    if (!entry)
        error = errno;
    return entry;
}

} // namespace

FolderEntries::FolderEntries(const QString &folder, HiddenEntries hidden)
    : m_stream(::opendir(QFile::encodeName(folder).constData()))
    , m_error(m_stream ? 0 : errno)
    , m_folderWithSlash(withSlash(folder))
    , m_hidden(hidden)
{
}

FolderEntries::~FolderEntries() = default;

bool FolderEntries::next()
{
    while (const dirent *const entry = m_stream ? nextEntry(m_stream.get(), m_error) : nullptr) {
        // Declared as an array of 256 bytes, but names on exFAT, NTFS and CIFS can have up to 765 bytes.
        const char *const name = entry->d_name;
        if (isLeftOut(name))
            continue;
        const std::optional<bool> isFolder = isFolderEntry(m_stream.get(), *entry);
        if (!isFolder)
            continue;
        m_name = QByteArrayView(name, static_cast<qsizetype>(std::strlen(name)));
        if (!isDecodable(m_name)) {
            ++m_undecodableNames;
            continue;
        }
        m_isFolder = *isFolder;
        return true;
    }
    return false;
}

bool FolderEntries::isLeftOut(const char *name) const
{
    return name[0] == '.' && (m_hidden == HiddenEntries::LeftOut || std::strcmp(name, ".") == 0 ||
                                 std::strcmp(name, "..") == 0);
}

QString FolderEntries::path() const
{
    return decodedPath(m_folderWithSlash, m_name);
}

bool FolderEntries::isFolder() const
{
    return m_isFolder;
}

QString FolderEntries::error() const
{
    return m_error == 0 ? QString() : qt_error_string(m_error);
}

int FolderEntries::folderDescriptor() const
{
    return ::dirfd(m_stream.get());
}

const char *FolderEntries::rawName() const
{
    return m_name.data();
}

#elif !defined(Q_OS_WIN)

#include <QDateTime>

namespace {

QDir::Filters filtersFor(HiddenEntries hidden)
{
    const QDir::Filters filters = QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks;
    return hidden == HiddenEntries::Listed ? filters | QDir::Hidden : filters;
}

} // namespace

FolderEntries::FolderEntries(const QString &folder, HiddenEntries hidden)
    : m_folder(folder)
    , m_entries(folder, filtersFor(hidden))
{
}

FolderEntries::~FolderEntries() = default;

bool FolderEntries::next()
{
    if (!m_entries.hasNext())
        return false;
    m_entries.next();
    return true;
}

QString FolderEntries::path() const
{
    return m_entries.filePath();
}

bool FolderEntries::isFolder() const
{
    return m_entries.fileInfo().isDir();
}

ListedFacts FolderEntries::facts() const
{
    const QFileInfo file = m_entries.fileInfo();
    const qint64 modified = file.lastModified().toMSecsSinceEpoch();
    const QDateTime created = file.birthTime();
    return {file.size(), modified, created.isValid() ? created.toMSecsSinceEpoch() : modified};
}

/// Opens the folder once more, because QDirIterator does not report errors.
QString FolderEntries::error() const
{
    return QDir(m_folder).isReadable() ? QString() : u"The folder cannot be read"_s;
}

#endif
