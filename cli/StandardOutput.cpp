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
/// Consoles of Windows refuse much more at once.
constexpr qsizetype mostAtOnce = 32768;

qint64 writeSome(QByteArrayView bytes)
{
    const auto count = static_cast<unsigned>(std::min(bytes.size(), mostAtOnce));
#ifdef Q_OS_WIN
    return ::_write(standardOutput, bytes.data(), count);
#else
    return ::write(standardOutput, bytes.data(), count);
#endif
}

/// Whether it makes sense to write again after \a error: the call was interrupted, or the reader shares a
/// stream that does not block, and this waits for it.
bool canTryAgain(int error)
{
#ifndef Q_OS_WIN
    if (error == EAGAIN) {
        pollfd stream = {standardOutput, POLLOUT, 0};
        (void)::poll(&stream, 1, -1);
        return true;
    }
#endif
    return error == EINTR;
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
        const qint64 written = writeSome(bytes);
        if (written >= 0) {
            bytes = bytes.sliced(written);
            continue;
        }
        const int error = errno;
        if (canTryAgain(error)) {
            if (interrupted())
                return WriteResult::Interrupted;
            continue;
        }
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
