#include "cli/StandardOutput.h"

#include "cli/Interruption.h"
#include "cli/Messages.h"

#include <QString>

#include <algorithm>
#include <cerrno>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <poll.h>
#include <unistd.h>
#endif

using Qt::Literals::StringLiterals::operator""_s;

namespace {

constexpr int standardOutput = 1;
/// A pipe that takes anything takes that much without waiting (POSIX's PIPE_BUF is at least 512, Linux's
/// 4096). On other systems consoles refuse much more at once.
constexpr qsizetype mostAtOnce = 4096;

/// Waits until standard output takes bytes; false when the user has interrupted the program.
bool waitForReader()
{
#ifndef Q_OS_WIN
    // A write would go on waiting when the signal comes just before it.
    constexpr int milliseconds = 100;
    pollfd stream = {standardOutput, POLLOUT, 0};
    while (!interrupted() && ::poll(&stream, 1, milliseconds) <= 0) {
    }
#endif
    return !interrupted();
}

qint64 writeSome(QByteArrayView bytes)
{
    const auto count = static_cast<unsigned>(std::min(bytes.size(), mostAtOnce));
#ifdef Q_OS_WIN
    return ::_write(standardOutput, bytes.data(), count);
#else
    return ::write(standardOutput, bytes.data(), count);
#endif
}

/// Windows reports a closed pipe as EINVAL.
bool isReaderGone(int error)
{
#ifdef Q_OS_WIN
    return error == EPIPE || error == EINVAL;
#else
    return error == EPIPE;
#endif
}

} // namespace

WriteResult writeToStandardOutput(QByteArrayView bytes, QString &reason)
{
    while (!bytes.isEmpty()) {
        if (!waitForReader())
            return WriteResult::Interrupted;
        const qint64 written = writeSome(bytes);
        if (written >= 0) {
            bytes = bytes.sliced(written);
            continue;
        }
        const int error = errno;
        if (error == EINTR || error == EAGAIN)
            continue;
        if (isReaderGone(error))
            return WriteResult::ReaderGone;
        reason = qt_error_string(error);
        return WriteResult::Failed;
    }
    return WriteResult::Written;
}

bool printToStandardOutput(const QString &text)
{
    QString reason;
    if (writeToStandardOutput(text.toUtf8(), reason) != WriteResult::Failed)
        return true;
    printMessage(u"cannot write to standard output: "_s + reason);
    return false;
}
