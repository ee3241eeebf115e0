#include "tests/support/FileLock.h"

#include <QFile>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

bool setDeletionLock(const QString &path, bool locked)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0)
        return false;
    int flags = 0;
    bool done = ::ioctl(file, FS_IOC_GETFLAGS, &flags) == 0;
    if (done) {
        flags = locked ? flags | FS_IMMUTABLE_FL : flags & ~FS_IMMUTABLE_FL;
        done = ::ioctl(file, FS_IOC_SETFLAGS, &flags) == 0;
    }
    ::close(file);
    return done;
}
#else
bool setDeletionLock(const QString &, bool)
{
    return false;
}
#endif
