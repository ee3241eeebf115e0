#include "tests/support/SimulatedDisk.h"

#include <QMutex>
#include <QMutexLocker>
#include <QSemaphore>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <map>
#include <string>
#include <utility>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

// Functions of the program take precedence over those of the C library.

namespace {

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): the replaced functions have no object.
QMutex mutex;
QSemaphore unblocked;
QList<SimulatedDisk::Range> prefetched;
/// Number of entries read from each folder.
std::map<const DIR *, qsizetype> entriesRead;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

/// A directory entry with space for a name longer than dirent64 declares.
struct LongEntry
{
    alignas(dirent64) std::array<char, sizeof(dirent64) + 1024> bytes;
};

template <typename Function>
Function *systemFunction(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

bool isNamed(const char *path, const char *name)
{
    const char *const slash = std::strrchr(path, '/');
    return std::strcmp(slash ? slash + 1 : path, name) == 0;
}

bool isNamed(int descriptor, const char *name)
{
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    std::array<char, 4096> path = {};
    return ::readlink(link.c_str(), path.data(), path.size() - 1) > 0 && isNamed(path.data(), name);
}

/// The next entry of longFileNames(); null at the end.
dirent64 *nextLongName(DIR *stream)
{
    thread_local LongEntry buffer;
    const QMutexLocker lock(&mutex);
    const QList<QByteArray> names = SimulatedDisk::longFileNames();
    const qsizetype index = entriesRead[stream]++;
    if (index == names.size())
        return nullptr;
    auto *const entry = new (buffer.bytes.data()) dirent64;
    entry->d_type = DT_REG;
    const QByteArray &name = names.at(index);
    std::copy_n(name.constData(), name.size() + 1, buffer.bytes.data() + offsetof(dirent64, d_name));
    return entry;
}

} // namespace

QList<QByteArray> SimulatedDisk::longFileNames()
{
    QList<QByteArray> names;
    for (const int length : {255, 256, 257, 300, 511, 512, 700, 765})
        names.append(QByteArray(length - 1, 'n') + 'a');
    names.append(QByteArray("\xE7\x85\xA7").repeated(255));
    names.append("\xEF\xBB\xBF" + QByteArray("\xE7\x85\xA7").repeated(254));
    return names;
}

void SimulatedDisk::unblock()
{
    unblocked.release();
}

QList<SimulatedDisk::Range> SimulatedDisk::takePrefetched()
{
    const QMutexLocker lock(&mutex);
    return std::exchange(prefetched, {});
}

// The parameter names of the C library are reserved.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)

extern "C" dirent64 *readdir64(DIR *stream)
{
    const int folder = ::dirfd(stream);
    if (isNamed(folder, SimulatedDisk::longNames))
        return nextLongName(stream);
    if (isNamed(folder, SimulatedDisk::failsAfterTwoEntries)) {
        const QMutexLocker lock(&mutex);
        if (entriesRead[stream]++ == 2) {
            errno = EIO;
            return nullptr;
        }
    }
    if (isNamed(folder, SimulatedDisk::blocked)) {
        unblocked.acquire();
        unblocked.release();
    }
    dirent64 *const entry = systemFunction<decltype(readdir64)>("readdir64")(stream);
    if (entry && isNamed(folder, SimulatedDisk::unknownTypes))
        entry->d_type = DT_UNKNOWN;
    return entry;
}

extern "C" int closedir(DIR *stream)
{
    {
        const QMutexLocker lock(&mutex);
        entriesRead.erase(stream);
    }
    return systemFunction<decltype(closedir)>("closedir")(stream);
}

extern "C" int statx(int folder, const char *path, int flags, unsigned int mask, struct statx *facts) noexcept
{
    const int result = systemFunction<decltype(statx)>("statx")(folder, path, flags, mask, facts);
    if (isNamed(path, SimulatedDisk::withoutBirthTime))
        facts->stx_mask &= ~static_cast<unsigned int>(STATX_BTIME);
    if (isNamed(path, SimulatedDisk::bornAtZero))
        facts->stx_btime = {};
    return result;
}

extern "C" ssize_t preadv64v2(int descriptor, const iovec *target, int count, off64_t position, int flags)
{
    iovec part = *target;
    if (isNamed(descriptor, SimulatedDisk::shortReads))
        part.iov_len = std::min<std::size_t>(part.iov_len, 1000);
    return systemFunction<decltype(preadv64v2)>("preadv64v2")(
        descriptor, count == 1 ? &part : target, count, position, flags);
}

extern "C" int posix_fadvise64(int descriptor, off64_t position, off64_t count, int advice) noexcept
{
    if (advice == POSIX_FADV_WILLNEED) {
        const QMutexLocker lock(&mutex);
        prefetched.append({position, count});
    }
    return systemFunction<decltype(posix_fadvise64)>("posix_fadvise64")(descriptor, position, count, advice);
}

extern "C" int open64(const char *path, int flags, ...)
{
    mode_t mode = 0;
    if ((flags & (O_CREAT | O_TMPFILE)) != 0) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    if ((flags & O_NONBLOCK) != 0 && isNamed(path, SimulatedDisk::leased)) {
        errno = EWOULDBLOCK;
        return -1;
    }
    return systemFunction<decltype(open64)>("open64")(path, flags, mode);
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)
