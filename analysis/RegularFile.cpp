#include "analysis/RegularFile.h"

#ifdef Q_OS_UNIX

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

RegularFile::RegularFile(const QString &path)
    : m_descriptor(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
{
    struct stat status = {};
    // To ask for the type by the path first would look the path up twice, which takes as long as to read the
    // file.
    if (m_descriptor < 0 || (::fstat(m_descriptor, &status) == 0 && S_ISREG(status.st_mode))) {
        m_sizeAtOpening = status.st_size;
        return;
    }
    ::close(m_descriptor);
    m_descriptor = -1;
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

qint64 RegularFile::size() const
{
    struct stat status = {};
    return ::fstat(m_descriptor, &status) == 0 ? status.st_size : 0;
}

qint64 RegularFile::read(char *data, qint64 count)
{
    qint64 done = 0;
    while (done < count) {
        const auto got = ::read(m_descriptor, data + done, static_cast<std::size_t>(count - done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        done += got;
        // Saves most files a call that only says that there is no more.
        if (m_position + done == m_sizeAtOpening)
            break;
    }
    m_position += done;
    return done;
}

void RegularFile::seek(qint64 position)
{
    if (::lseek(m_descriptor, position, SEEK_SET) >= 0)
        m_position = position;
}

#else

#include <QFileInfo>

RegularFile::RegularFile(const QString &path)
    : m_file(path)
{
    if (QFileInfo(m_file).isFile())
        m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

RegularFile::~RegularFile() = default;

bool RegularFile::isOpen() const
{
    return m_file.isOpen();
}

qint64 RegularFile::size() const
{
    return m_file.size();
}

qint64 RegularFile::read(char *data, qint64 count)
{
    return qMax<qint64>(m_file.read(data, count), 0);
}

void RegularFile::seek(qint64 position)
{
    m_file.seek(position);
}

#endif
