#include "analysis/RegularFile.h"

#ifdef Q_OS_UNIX

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

constexpr int readOnly = O_RDONLY | O_CLOEXEC;

/// Opens the regular file \a name, on which another program holds a lease. Blocks until the lease is
/// released. Returns -1 if \a name is not a regular file.
int openLeasedFile([[maybe_unused]] const char *name)
{
    int descriptor = -1;
#ifdef O_PATH
    const int place = ::open(name, O_PATH | O_CLOEXEC);
    struct stat status = {};
    if (place >= 0 && ::fstat(place, &status) == 0 && S_ISREG(status.st_mode)) {
        // Not by its path: the file may have been replaced by a pipe, which would block.
        const QByteArray file = "/proc/self/fd/" + QByteArray::number(place);
        descriptor = ::open(file.constData(), readOnly);
    }
    if (place >= 0)
        ::close(place);
#endif
    return descriptor;
}

/// Opens \a name, a file of any type. Returns -1 on failure. Blocks on a lease, but not on a pipe.
int openForReading(const char *name)
{
    const int descriptor = ::open(name, readOnly | O_NONBLOCK);
    return descriptor < 0 && errno == EWOULDBLOCK ? openLeasedFile(name) : descriptor;
}

} // namespace

RegularFile::RegularFile(const QString &path)
    : m_descriptor(openForReading(QFile::encodeName(path).constData()))
{
    if (m_descriptor < 0) {
        m_error = errno;
        return;
    }
    // Not stat() before open(): a second lookup of the path would take as long as reading the file.
    if (struct stat status = {}; ::fstat(m_descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        m_sizeAtOpening = status.st_size;
        // Clears O_NONBLOCK, with which reads of some file systems fail instead of blocking.
        ::fcntl(m_descriptor, F_SETFL, 0);
        return;
    }
    ::close(m_descriptor);
    m_descriptor = -1;
    m_error = EINVAL;
}

RegularFile::~RegularFile()
{
    if (isOpen())
        ::close(m_descriptor);
}

bool RegularFile::isOpen() const
{
    return m_descriptor >= 0;
}

QString RegularFile::errorText() const
{
    return m_error == 0 ? QString() : qt_error_string(m_error);
}

qint64 RegularFile::sizeAtOpening() const
{
    return m_sizeAtOpening;
}

void RegularFile::prefetch([[maybe_unused]] qint64 position, [[maybe_unused]] qint64 count) const
{
#ifdef POSIX_FADV_WILLNEED
    // Linux shortens a request that exceeds the maximum transfer size of the device.
    constexpr qint64 longestRequest = qint64(512) * 1024;
    for (const qint64 end = position + count; position < end; position += longestRequest) {
        ::posix_fadvise(
            m_descriptor, position, std::min(longestRequest, end - position), POSIX_FADV_WILLNEED);
    }
#endif
}

bool RegularFile::prefetchEnds([[maybe_unused]] qint64 count) const
{
#ifdef POSIX_FADV_WILLNEED
    return ::posix_fadvise(m_descriptor, 0, count, POSIX_FADV_WILLNEED) == 0 &&
           (m_sizeAtOpening <= 2 * count ||
               ::posix_fadvise(m_descriptor, m_sizeAtOpening - count, count, POSIX_FADV_WILLNEED) == 0);
#else
    return false;
#endif
}

qint64 RegularFile::readAt(qint64 position, char *data, qint64 count)
{
    m_end = position;
    m_error = 0;
    const qint64 wanted = position + count;
    while (m_end < wanted) {
        const auto got =
            ::pread(m_descriptor, data + (m_end - position), static_cast<std::size_t>(wanted - m_end), m_end);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            m_error = errno;
        if (got <= 0)
            break;
        m_end += got;
        // Skips the final pread() that would return 0.
        if (m_end == m_sizeAtOpening)
            break;
    }
    return m_end - position;
}

std::optional<qint64> RegularFile::readIfCached(
    [[maybe_unused]] qint64 position, [[maybe_unused]] char *data, [[maybe_unused]] qint64 count)
{
#ifdef RWF_NOWAIT
    const iovec target{data, static_cast<std::size_t>(count)};
    const auto got = ::preadv2(m_descriptor, &target, 1, position, RWF_NOWAIT);
    if (got < 0)
        return std::nullopt;
    m_end = position + got;
    if (got == count || m_end == m_sizeAtOpening)
        return got;
    return got + readAt(m_end, data + got, count - got);
#else
    return std::nullopt;
#endif
}

qint64 RegularFile::size() const
{
    // Skips an fstat() that would return the same size again.
    if (m_end > 0 && m_end == m_sizeAtOpening)
        return m_sizeAtOpening;
    struct stat status = {};
    return ::fstat(m_descriptor, &status) == 0 ? status.st_size : 0;
}

#else

#include <QFileInfo>

RegularFile::RegularFile(const QString &path)
    : m_file(path)
{
    // Opening a missing file sets the error text.
    if (const QFileInfo info(m_file); info.isFile() || !info.exists())
        m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

RegularFile::~RegularFile() = default;

bool RegularFile::isOpen() const
{
    return m_file.isOpen();
}

QString RegularFile::errorText() const
{
    if (m_file.error() != QFileDevice::NoError)
        return m_file.errorString();
    return isOpen() ? QString() : QStringLiteral("Not a regular file");
}

qint64 RegularFile::sizeAtOpening() const
{
    return m_file.size();
}

void RegularFile::prefetch(qint64 /*position*/, qint64 /*count*/) const {}

bool RegularFile::prefetchEnds(qint64 /*count*/) const
{
    return false;
}

qint64 RegularFile::readAt(qint64 position, char *data, qint64 count)
{
    return m_file.seek(position) ? qMax<qint64>(m_file.read(data, count), 0) : 0;
}

std::optional<qint64> RegularFile::readIfCached(qint64 /*position*/, char * /*data*/, qint64 /*count*/)
{
    return std::nullopt;
}

qint64 RegularFile::size() const
{
    return m_file.size();
}

#endif
