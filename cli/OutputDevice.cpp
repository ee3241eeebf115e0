#include "cli/OutputDevice.h"

#ifdef Q_OS_UNIX
#include "cli/Interruption.h"

#include <cerrno>
#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool isPipe(const char *path)
{
    struct stat status = {};
    return ::stat(path, &status) == 0 && S_ISFIFO(status.st_mode);
}

} // namespace

WriteResult openDevice(const QString &path, QFile &device, QString &reason)
{
    constexpr std::chrono::milliseconds readerPoll{20};
    const QByteArray name = QFile::encodeName(path);
    // A blocking open() of a pipe would wait for a reader and ignore the interruption.
    int descriptor = -1;
    while ((descriptor = ::open(name.constData(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) < 0) {
        const int error = errno;
        if (interrupted())
            return WriteResult::Interrupted;
        if (error != EINTR && (error != ENXIO || !isPipe(name.constData()))) {
            reason = qt_error_string(error);
            return WriteResult::Failed;
        }
        std::this_thread::sleep_for(readerPoll);
    }
    (void)::fcntl(descriptor, F_SETFL, 0);
    if (device.open(descriptor, QFile::WriteOnly | QFile::Unbuffered, QFile::AutoCloseHandle))
        return WriteResult::Written;
    ::close(descriptor);
    reason = device.errorString();
    return WriteResult::Failed;
}

#else

WriteResult openDevice(const QString &path, QFile &device, QString &reason)
{
    device.setFileName(path);
    if (device.open(QFile::WriteOnly | QFile::Unbuffered))
        return WriteResult::Written;
    reason = device.errorString();
    return WriteResult::Failed;
}

#endif
