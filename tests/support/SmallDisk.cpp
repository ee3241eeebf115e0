#include "tests/support/SmallDisk.h"

#ifdef Q_OS_LINUX

#include <QFile>

#include <sys/mount.h>

#include <cerrno>

namespace {

/// The reason for a failure; empty on success.
QString mountSmallDisk(const QString &folder)
{
    const int result = ::mount(
        "none", QFile::encodeName(folder).constData(), "tmpfs", MS_NODEV | MS_NOSUID, "size=1m,nr_inodes=64");
    return result == 0 ? QString() : QStringLiteral("mounting a small disk: ") + qt_error_string(errno);
}

} // namespace

SmallDisk::SmallDisk(const QString &folder)
    : m_folder(folder)
    , m_obstacle(mountSmallDisk(folder))
{
}

SmallDisk::~SmallDisk()
{
    if (m_obstacle.isEmpty())
        ::umount2(QFile::encodeName(m_folder).constData(), MNT_DETACH);
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
    return ::mount("none", QFile::encodeName(m_folder).constData(), "tmpfs",
               MS_REMOUNT | MS_RDONLY | MS_NODEV | MS_NOSUID, nullptr) == 0;
}

#else

SmallDisk::SmallDisk(const QString &folder)
    : m_folder(folder)
    , m_obstacle(QStringLiteral("only Linux can mount a disk in memory"))
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

#endif
