#include "tests/support/ImmutableFile.h"

#ifdef Q_OS_LINUX

#include <QFile>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>

namespace {

/// The reason for a failure; empty on success.
QString setImmutable(const QString &path, bool immutable)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return QStringLiteral("opening the file: ") + qt_error_string(errno);
    int flags = 0;
    QString obstacle;
    if (::ioctl(file, FS_IOC_GETFLAGS, &flags) != 0) {
        obstacle = QStringLiteral("reading the flags of the file: ") + qt_error_string(errno);
    } else {
        flags = immutable ? flags | FS_IMMUTABLE_FL : flags & ~FS_IMMUTABLE_FL;
        if (::ioctl(file, FS_IOC_SETFLAGS, &flags) != 0)
            obstacle = QStringLiteral("setting the flags of the file: ") + qt_error_string(errno);
    }
    ::close(file);
    return obstacle;
}

} // namespace

ImmutableFile::ImmutableFile(const QString &path)
    : m_path(path)
    , m_obstacle(setImmutable(path, true))
{
}

ImmutableFile::~ImmutableFile()
{
    if (m_obstacle.isEmpty())
        setImmutable(m_path, false);
}

#else

ImmutableFile::ImmutableFile(const QString &path)
    : m_path(path)
    , m_obstacle(QStringLiteral("only Linux has immutable files"))
{
}

ImmutableFile::~ImmutableFile() = default;

#endif
