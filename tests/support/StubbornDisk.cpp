#include "tests/support/StubbornDisk.h"

#include <QFile>

#ifdef Q_OS_LINUX

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

QString reason(const char *what)
{
    return QStringLiteral("%1: %2").arg(
        QLatin1StringView(what), QString::fromLocal8Bit(std::strerror(errno)));
}

QString setImmutable(const QString &path, bool immutable)
{
    const int file = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    int flags = 0;
    QString obstacle;
    if (file < 0 || ioctl(file, FS_IOC_GETFLAGS, &flags) != 0) {
        obstacle = reason("reading the flags of the file");
    } else {
        flags = immutable ? flags | FS_IMMUTABLE_FL : flags & ~FS_IMMUTABLE_FL;
        if (ioctl(file, FS_IOC_SETFLAGS, &flags) != 0)
            obstacle = reason("making the file immutable");
    }
    if (file >= 0)
        close(file);
    return obstacle;
}

QString mountSmallDisk(const QString &folder)
{
    const int result = mount(
        "none", QFile::encodeName(folder).constData(), "tmpfs", MS_NODEV | MS_NOSUID, "size=1m,nr_inodes=64");
    return result == 0 ? QString() : reason("mounting a small disk");
}

int watchFolders(const QStringList &folders)
{
    const int events = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    for (const QString &folder : folders) {
        if (events >= 0)
            inotify_add_watch(events, QFile::encodeName(folder).constData(), IN_OPEN);
    }
    return events;
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

SmallDisk::SmallDisk(const QString &folder)
    : m_folder(folder)
    , m_obstacle(mountSmallDisk(folder))
{
}

SmallDisk::~SmallDisk()
{
    if (m_obstacle.isEmpty())
        umount2(QFile::encodeName(m_folder).constData(), MNT_DETACH);
}

bool SmallDisk::fillUp(const QString &fileName)
{
    QFile file(m_folder + u'/' + fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    const QByteArray block(4096, 'f');
    while (file.write(block) == block.size()) {
    }
    return errno == ENOSPC;
}

bool SmallDisk::makeReadOnly()
{
    return mount("none", QFile::encodeName(m_folder).constData(), "tmpfs",
               MS_REMOUNT | MS_RDONLY | MS_NODEV | MS_NOSUID, nullptr) == 0;
}

OpenWatch::OpenWatch(const QStringList &folders)
    : m_events(watchFolders(folders))
{
}

OpenWatch::~OpenWatch()
{
    if (m_events >= 0)
        close(m_events);
}

QStringList OpenWatch::opened()
{
    alignas(inotify_event) char buffer[16384];
    for (ssize_t length = 0; (length = read(m_events, buffer, sizeof buffer)) > 0;) {
        for (ssize_t position = 0; position < length;) {
            const auto *const event = reinterpret_cast<const inotify_event *>(buffer + position);
            if (event->len > 0)
                m_opened.append(QFile::decodeName(event->name));
            position += static_cast<ssize_t>(sizeof *event + event->len);
        }
    }
    return m_opened;
}

#else

ImmutableFile::ImmutableFile(const QString &path)
    : m_path(path)
    , m_obstacle(QStringLiteral("no file is immutable here"))
{
}

ImmutableFile::~ImmutableFile() = default;

SmallDisk::SmallDisk(const QString &folder)
    : m_folder(folder)
    , m_obstacle(QStringLiteral("there are no disks to mount here"))
{
}

SmallDisk::~SmallDisk() = default;

bool SmallDisk::fillUp(const QString &)
{
    return false;
}

bool SmallDisk::makeReadOnly()
{
    return false;
}

OpenWatch::OpenWatch(const QStringList &)
    : m_events(-1)
{
}

OpenWatch::~OpenWatch() = default;

QStringList OpenWatch::opened()
{
    return m_opened;
}

#endif
