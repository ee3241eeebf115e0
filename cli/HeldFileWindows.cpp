#include "cli/HeldFile.h"

#include "cli/FileHandle.h"
#include "cli/SystemError.h"
#include "scan/NativePath.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

using Qt::StringLiterals::operator""_s;

namespace {

Obstacle lastError()
{
    return systemObstacle(static_cast<int>(::GetLastError()));
}

Obstacle notAsReported(const QString &reason)
{
    return {Obstacle::Kind::NotAsReported, reason};
}

quint64 joined(DWORD high, DWORD low)
{
    return (quint64{high} << 32) | low;
}

FileIdentity identityOf(const BY_HANDLE_FILE_INFORMATION &facts)
{
    return {facts.dwVolumeSerialNumber, joined(facts.nFileIndexHigh, facts.nFileIndexLow)};
}

/// Opens the entry at \a path. Does not follow a link or a junction.
HANDLE openEntry(const QString &path, DWORD access, DWORD sharing)
{
    return ::CreateFileW(nativePath(path).c_str(), access, sharing, nullptr, OPEN_EXISTING,
        FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
}

} // namespace

HANDLE handleOf(const QFile &file)
{
    return reinterpret_cast<HANDLE>(::_get_osfhandle(file.handle()));
}

std::optional<FileIdentity> identityAt(const QString &path)
{
    if (path.isEmpty() || path.contains(QChar::Null))
        return std::nullopt;
    const HANDLE handle =
        openEntry(path, FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    if (handle == INVALID_HANDLE_VALUE)
        return std::nullopt;
    BY_HANDLE_FILE_INFORMATION facts = {};
    const bool isKnown = ::GetFileInformationByHandle(handle, &facts) != 0;
    ::CloseHandle(handle);
    return isKnown ? std::optional(identityOf(facts)) : std::nullopt;
}

HeldFile::~HeldFile() = default;

std::optional<Obstacle> HeldFile::open(const AbandonCheck & /*abandoned*/)
{
    // Windows would ignore the separator and open the file.
    if (m_path.endsWith(u'/') || m_path.endsWith(u'\\'))
        return systemObstacle(ERROR_FILE_NOT_FOUND);
    // Without FILE_SHARE_WRITE, no program can write to the file while it is open here.
    const HANDLE handle = openEntry(m_path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE);
    if (handle == INVALID_HANDLE_VALUE)
        return lastError();
    BY_HANDLE_FILE_INFORMATION facts = {};
    constexpr DWORD notAFile =
        FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DEVICE;
    if (::GetFileType(handle) != FILE_TYPE_DISK || ::GetFileInformationByHandle(handle, &facts) == 0 ||
        (facts.dwFileAttributes & notAFile) != 0) {
        ::CloseHandle(handle);
        return notAsReported(u"it is no regular file"_s);
    }
    m_facts = {identityOf(facts), static_cast<qint64>(joined(facts.nFileSizeHigh, facts.nFileSizeLow)),
        facts.nNumberOfLinks};
    const int descriptor = ::_open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_RDONLY | _O_BINARY);
    if (descriptor < 0) {
        ::CloseHandle(handle);
        return notAsReported(u"it cannot be read"_s);
    }
    if (!m_content.open(descriptor, QFile::ReadOnly | QFile::Unbuffered, QFile::AutoCloseHandle)) {
        ::_close(descriptor);
        return notAsReported(u"it cannot be read"_s);
    }
    return std::nullopt;
}

FileIdentity HeldFile::identity() const
{
    return m_facts.identity;
}

qint64 HeldFile::size() const
{
    return m_facts.size;
}

quint64 HeldFile::links() const
{
    return m_facts.links;
}

std::optional<Obstacle> HeldFile::change() const
{
    if (identityAt(m_path) == identity())
        return std::nullopt;
    return notAsReported(u"it was replaced while it was compared"_s);
}

std::optional<Obstacle> HeldFile::lockedFolder() const
{
    // Windows reports missing permissions only when the action is tried.
    return std::nullopt;
}
