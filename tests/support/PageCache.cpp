#include "tests/support/PageCache.h"

#ifdef Q_OS_LINUX

#include <QFile>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

/// Whether the first byte of an open file is in memory. To try and read it would fetch it.
bool isInMemory(int file)
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
    // Only what the disk has already can be taken away.
    const bool left =
        fsync(file) == 0 && posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED) == 0 && !isInMemory(file);
    close(file);
    return left;
}

#else

bool dropFromPageCache(const QString &)
{
    return false;
}

#endif
