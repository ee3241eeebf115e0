#include "tests/support/SpecialFiles.h"

#include <QFile>

#include <filesystem>

#ifdef Q_OS_UNIX

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

bool makePipe(const QString &path)
{
    return mkfifo(QFile::encodeName(path).constData(), S_IRUSR | S_IWUSR) == 0;
}

bool makeSocket(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    sockaddr_un address{};
    if (static_cast<std::size_t>(name.size()) >= sizeof address.sun_path)
        return false;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    const int server = socket(AF_UNIX, SOCK_STREAM, 0);
    // The name remains after the socket is closed.
    const bool bound =
        server >= 0 && bind(server, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    if (server >= 0)
        close(server);
    return bound;
}

bool makeLink(const QString &target, const QString &path)
{
    return symlink(QFile::encodeName(target).constData(), QFile::encodeName(path).constData()) == 0;
}

bool writeFileWithRawName(const QString &folder, const QByteArray &name, const QByteArray &content)
{
    std::FILE *const file = std::fopen((QFile::encodeName(folder) + '/' + name).constData(), "wb");
    if (!file)
        return false;
    const auto size = static_cast<std::size_t>(content.size());
    const bool written = std::fwrite(content.constData(), 1, size, file) == size;
    return std::fclose(file) == 0 && written;
}

bool removeFileWithRawName(const QString &folder, const QByteArray &name)
{
    return std::remove((QFile::encodeName(folder) + '/' + name).constData()) == 0;
}

#else

bool makePipe(const QString &)
{
    return false;
}

bool makeSocket(const QString &)
{
    return false;
}

bool makeLink(const QString &, const QString &)
{
    return false;
}

bool writeFileWithRawName(const QString &, const QByteArray &, const QByteArray &)
{
    return false;
}

bool removeFileWithRawName(const QString &, const QByteArray &)
{
    return false;
}

#endif

bool makeHardLink(const QString &existing, const QString &path)
{
    std::error_code error;
    std::filesystem::create_hard_link(existing.toStdU16String(), path.toStdU16String(), error);
    return !error;
}
