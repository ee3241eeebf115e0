#include "tests/support/PageCache.h"

#ifdef Q_OS_LINUX

#include <QFile>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

/// True if the first byte of an open file is cached. Reading the byte would cache it.
bool isCached(int file)
{
    void *const page = mmap(nullptr, 1, PROT_READ, MAP_SHARED, file, 0);
    if (page == MAP_FAILED)
        return true;
    unsigned char resident = 1;
    mincore(page, 1, &resident);
    munmap(page, 1);
    return (resident & 1) != 0;
}

} // namespace

bool dropFromPageCache(const QString &path)
{
    const int file = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    // Only data that is on the disk can be dropped.
    const bool dropped =
        fsync(file) == 0 && posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED) == 0 && !isCached(file);
    close(file);
    return dropped;
}

#else

bool dropFromPageCache(const QString &)
{
    return false;
}

#endif
