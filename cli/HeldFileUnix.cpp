#include "cli/HeldFile.h"

#include "cli/SystemError.h"

#include <cerrno>
#include <chrono>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

using Qt::StringLiterals::operator""_s;

namespace {

#ifdef O_PATH
/// Works without the permission to list the folder.
constexpr int openFolder = O_PATH | O_DIRECTORY | O_CLOEXEC;
#else
constexpr int openFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
#endif

Obstacle lastError()
{
    return systemObstacle(errno);
}

Obstacle notAsReported(const QString &reason)
{
    return {Obstacle::Kind::NotAsReported, reason};
}

FileIdentity identityOf(const struct stat &status)
{
    return {status.st_dev, status.st_ino};
}

bool isSameTime(const timespec &a, const timespec &b)
{
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

/// Opens the regular file \a name for reading. Does not follow a link and does not block on a pipe that takes
/// its place at this moment. Waits while another program holds a lease on the file.
int openForReading(int folder, const QByteArray &name, const AbandonCheck &abandoned)
{
    constexpr int flags = O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NOCTTY | O_NONBLOCK;
    // The kernel breaks a lease after /proc/sys/fs/lease-break-time, 45 seconds by default.
    constexpr std::chrono::milliseconds leasePoll{20};
    while (true) {
        const int file = ::openat(folder, name.constData(), flags);
        if (file >= 0 || (errno != EWOULDBLOCK && errno != EINTR) || abandoned())
            return file;
        std::this_thread::sleep_for(leasePoll);
    }
}

} // namespace

std::optional<FileIdentity> identityAt(const QString &path)
{
    struct stat status = {};
    if (path.contains(QChar::Null) || ::lstat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    return identityOf(status);
}

HeldFile::~HeldFile()
{
    if (m_folder >= 0)
        ::close(m_folder);
}

std::optional<Obstacle> HeldFile::open(const AbandonCheck &abandoned)
{
    const QByteArray path = QFile::encodeName(m_path);
    const qsizetype slash = path.lastIndexOf('/');
    m_name = path.sliced(slash + 1);
    m_folder = ::open(path.first(slash + 1).constData(), openFolder);
    if (m_folder < 0)
        return lastError();
    // Checked before opening: opening a device or a pipe can have effects.
    if (::fstatat(m_folder, m_name.constData(), &m_status, AT_SYMLINK_NOFOLLOW) != 0)
        return lastError();
    if (S_ISLNK(m_status.st_mode))
        return notAsReported(u"it is a link"_s);
    if (!S_ISREG(m_status.st_mode))
        return notAsReported(u"it is no regular file"_s);
    const int file = openForReading(m_folder, m_name, abandoned);
    if (file < 0)
        return abandoned() ? Obstacle{Obstacle::Kind::Interrupted, u"interrupted"_s} : lastError();
    const bool isRegular = ::fstat(file, &m_status) == 0 && S_ISREG(m_status.st_mode);
    if (!isRegular || ::fcntl(file, F_SETFL, 0) != 0 ||
        !m_content.open(file, QFile::ReadOnly | QFile::Unbuffered, QFile::AutoCloseHandle)) {
        ::close(file);
        return notAsReported(u"it is no regular file"_s);
    }
    return std::nullopt;
}

FileIdentity HeldFile::identity() const
{
    return identityOf(m_status);
}

qint64 HeldFile::size() const
{
    return m_status.st_size;
}

quint64 HeldFile::links() const
{
    return m_status.st_nlink;
}

std::optional<Obstacle> HeldFile::change() const
{
    struct stat held = {};
    if (::fstat(m_content.handle(), &held) != 0)
        return lastError();
    // Checks the path, in which a folder may have been replaced, and the name in the open folder, which the
    // action uses.
    const std::optional<FileIdentity> atPath = identityAt(m_path);
    struct stat atName = {};
    if (::fstatat(m_folder, m_name.constData(), &atName, AT_SYMLINK_NOFOLLOW) != 0)
        return lastError();
    if (atPath != identity() || identityOf(atName) != identity())
        return notAsReported(u"it was replaced while it was compared"_s);
    if (held.st_size != m_status.st_size || !isSameTime(held.st_mtim, m_status.st_mtim) ||
        !isSameTime(held.st_ctim, m_status.st_ctim))
        return notAsReported(u"it changed while it was compared"_s);
    return std::nullopt;
}

std::optional<Obstacle> HeldFile::lockedFolder() const
{
    if (::faccessat(m_folder, ".", W_OK | X_OK, AT_EACCESS) == 0)
        return std::nullopt;
    return Obstacle{Obstacle::Kind::System, u"its folder: "_s + lastError().reason};
}
