#include "cli/ReportInput.h"

#include "cli/FilePath.h"

#include <QFile>

#include <optional>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#else
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#endif

using Qt::StringLiterals::operator""_s;

namespace {

constexpr qsizetype blockSize = qsizetype(1024) * 1024;

Obstacle noReport(const QString &reason)
{
    return {Obstacle::Kind::System, reason};
}

/// Opens \a path, or standard input for "-". Does not block on a pipe without a writer. Returns the reason
/// for a failure.
std::optional<QString> openInput(QFile &file, const QString &path)
{
#ifdef Q_OS_UNIX
    const int descriptor = path == u"-" ? ::dup(STDIN_FILENO)
                                        : ::open(QFile::encodeName(path).constData(),
                                              O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (descriptor < 0)
        return qt_error_string(errno);
    if (path != u"-")
        (void)::fcntl(descriptor, F_SETFL, 0);
    if (!file.open(descriptor, QFile::ReadOnly | QFile::Unbuffered, QFile::AutoCloseHandle)) {
        ::close(descriptor);
        return u"Is a directory"_s;
    }
    return std::nullopt;
#else
    if (path == u"-") {
        (void)::_setmode(::_fileno(stdin), _O_BINARY);
        // Opened by its descriptor: QFile reports the end of a piped FILE as an error.
        if (file.open(::_fileno(stdin), QFile::ReadOnly | QFile::Unbuffered))
            return std::nullopt;
    } else {
        file.setFileName(asFilePath(path));
        if (file.open(QFile::ReadOnly | QFile::Unbuffered))
            return std::nullopt;
    }
    return file.errorString();
#endif
}

/// Waits until there is something to read. False if \a abandoned returns true first.
bool waitForInput([[maybe_unused]] const QFile &file, const AbandonCheck &abandoned)
{
#ifdef Q_OS_UNIX
    constexpr int pollInterval = 100; // ms
    pollfd descriptor{file.handle(), POLLIN, 0};
    while (!abandoned()) {
        const int ready = ::poll(&descriptor, 1, pollInterval);
        if (ready > 0 || (ready < 0 && errno != EINTR))
            return true;
    }
    return false;
#else
    return !abandoned();
#endif
}

enum class Beginning { Object, Other, Unknown };

/// Whether \a bytes, the first ones of the input, begin a JSON object. Unknown if they are too few.
Beginning beginningOf(QByteArrayView bytes)
{
    constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    if (bytes.startsWith(byteOrderMark))
        bytes = bytes.sliced(byteOrderMark.size());
    else if (byteOrderMark.startsWith(bytes))
        return Beginning::Unknown;
    bytes = bytes.trimmed();
    if (bytes.isEmpty())
        return Beginning::Unknown;
    return bytes.front() == '{' ? Beginning::Object : Beginning::Other;
}

} // namespace

std::variant<QByteArray, Obstacle> readReportBytes(const QString &path, const AbandonCheck &abandoned)
{
    QFile file;
    if (const auto reason = openInput(file, path))
        return noReport(*reason);
    const Obstacle tooLarge = noReport(u"it is larger than every report (512 MB)"_s);
    if (!file.isSequential() && file.size() > largestReport)
        return tooLarge;
    QByteArray bytes;
    auto beginning = Beginning::Unknown;
    while (true) {
        if (!waitForInput(file, abandoned))
            return Obstacle{Obstacle::Kind::Interrupted, u"interrupted"_s};
        const QByteArray block = file.read(blockSize);
        if (block.isEmpty() && file.error() != QFile::NoError)
            return noReport(file.errorString());
        if (block.isEmpty())
            break;
        // Most binary files contain a NUL near their beginning.
        if (block.contains('\0'))
            return noReport(u"it is no text"_s);
        bytes += block;
        if (beginning == Beginning::Unknown)
            beginning = beginningOf(bytes);
        if (beginning == Beginning::Other || (beginning == Beginning::Unknown && bytes.size() >= blockSize))
            return noReport(u"it is no JSON object"_s);
        if (bytes.size() > largestReport)
            return tooLarge;
    }
    if (bytes.isEmpty())
        return noReport(u"it is empty"_s);
    return bytes;
}
