#include "scan/FileFacts.h"

#include "scan/FolderEntries.h"

#ifdef Q_OS_LINUX

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace {

qint64 milliseconds(const statx_timestamp &time)
{
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000;
}

SurveyedFile surveyedFile(const QString &path, const struct statx &facts)
{
    SurveyedFile file{.path = path,
        .size = static_cast<qint64>(facts.stx_size),
        .modified = milliseconds(facts.stx_mtime),
        .created = 0,
        .identity = {makedev(facts.stx_dev_major, facts.stx_dev_minor), facts.stx_ino},
        .links = facts.stx_nlink};
    // Some file systems report a creation time of 0 although they have none.
    if ((facts.stx_mask & STATX_BTIME) != 0)
        file.created = milliseconds(facts.stx_btime);
    if (file.created == 0)
        file.created = file.modified;
    return file;
}

} // namespace

std::optional<FileFacts> factsOf(const FolderEntries &entries, const QString &path, SizeLimits limits)
{
    struct statx facts = {};
    if (::statx(entries.folderDescriptor(), entries.rawName(), AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT,
            STATX_BASIC_STATS | STATX_BTIME, &facts) != 0) {
        const int error = errno;
        return error == ENOENT ? std::nullopt
                               : std::optional<FileFacts>(UnreadablePath{path, qt_error_string(error)});
    }
    if (!S_ISREG(facts.stx_mode) || !limits.contains(static_cast<qint64>(facts.stx_size)))
        return std::nullopt;
    return surveyedFile(path, facts);
}

#else

#ifdef Q_OS_WIN
#include "scan/NativePath.h"

#include <qt_windows.h>
#else
#include <QFile>

#include <sys/stat.h>
#endif

namespace {

#ifdef Q_OS_WIN

using Qt::Literals::StringLiterals::operator""_s;

/// Sets the identity and the number of links of \a file. Returns the error message; empty on success.
QString identify(SurveyedFile &file)
{
    const HANDLE handle =
        CreateFileW(nativePath(file.path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
            nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (handle == INVALID_HANDLE_VALUE) // NOLINT(performance-no-int-to-ptr): Windows defines it so.
        return qt_error_string();
    BY_HANDLE_FILE_INFORMATION facts = {};
    const QString reason = GetFileInformationByHandle(handle, &facts) ? QString() : qt_error_string();
    CloseHandle(handle);
    file.identity = {
        facts.dwVolumeSerialNumber, static_cast<quint64>(facts.nFileIndexHigh) << 32U | facts.nFileIndexLow};
    file.links = facts.nNumberOfLinks;
    return reason;
}

#else

/// Sets the identity and the number of links of \a file. Returns the error message; empty on success.
QString identify(SurveyedFile &file)
{
    struct stat facts = {};
    if (::lstat(QFile::encodeName(file.path).constData(), &facts) != 0)
        return qt_error_string();
    file.identity = {static_cast<quint64>(facts.st_dev), static_cast<quint64>(facts.st_ino)};
    file.links = static_cast<quint32>(facts.st_nlink);
    return {};
}

#endif

} // namespace

std::optional<FileFacts> factsOf(const FolderEntries &entries, const QString &path, SizeLimits limits)
{
    const ListedFacts facts = entries.facts();
    if (!limits.contains(facts.size))
        return std::nullopt;
    SurveyedFile file{.path = path,
        .size = facts.size,
        .modified = facts.modified,
        .created = facts.created,
        .identity = {}};
    if (const QString reason = identify(file); !reason.isEmpty())
        return UnreadablePath{path, reason};
    return file;
}

#endif
