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

/// Bytes per write. A pipe on Linux that is ready takes PIPE_BUF (4096) bytes without blocking. Consoles of
/// Windows reject much larger writes.
constexpr qsizetype mostAtOnce = 4096;

/// Waits until \a stream takes bytes. False if the program was interrupted.
bool waitForReader([[maybe_unused]] int stream)
{
#ifndef Q_OS_WIN
    // A signal just before a blocking write() would not end it.
    constexpr int milliseconds = 100;
    pollfd polled = {stream, POLLOUT, 0};
    while (!interrupted() && ::poll(&polled, 1, milliseconds) <= 0) {
    }
#endif
    return !interrupted();
}

qint64 writeSome(int stream, QByteArrayView bytes)
{
    const auto count = static_cast<unsigned>(std::min(bytes.size(), mostAtOnce));
#ifdef Q_OS_WIN
    return ::_write(stream, bytes.data(), count);
#else
    return ::write(stream, bytes.data(), count);
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

WriteResult writeToStream(int stream, QByteArrayView bytes, QString &reason)
{
    while (!bytes.isEmpty()) {
        if (!waitForReader(stream))
            return WriteResult::Interrupted;
        const qint64 written = writeSome(stream, bytes);
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
    if (writeToStream(standardOutput, text.toUtf8(), reason) != WriteResult::Failed)
        return true;
    printMessage(u"cannot write standard output: "_s + reason);
    return false;
}
