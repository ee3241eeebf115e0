#include "tests/support/LeaseHolder.h"

#ifdef Q_OS_LINUX

#include <QFile>

#include <array>
#include <csignal>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// The code of the forked process, which may only use system calls. Writes one byte to \a answer: 'y' if it
/// holds the lease, 'n' otherwise.
[[noreturn]] void holdLease(const char *path, const QByteArray &content, int answer)
{
    sigset_t leaseSignal;
    sigemptyset(&leaseSignal);
    sigaddset(&leaseSignal, SIGIO);
    sigprocmask(SIG_BLOCK, &leaseSignal, nullptr);
    const int file = open(path, O_RDWR | O_CLOEXEC);
    const char holds = file >= 0 && fcntl(file, F_SETLEASE, F_WRLCK) == 0 ? 'y' : 'n';
    if (write(answer, &holds, 1) == 1 && holds == 'y') {
        int received = 0;
        sigwait(&leaseSignal, &received);
        const bool written =
            pwrite(file, content.constData(), static_cast<std::size_t>(content.size()), 0) == content.size();
        fcntl(file, F_SETLEASE, F_UNLCK);
        _exit(written ? 0 : 1);
    }
    _exit(1);
}

} // namespace

LeaseHolder::LeaseHolder(const QString &path, const QByteArray &content)
{
    const QByteArray name = QFile::encodeName(path);
    std::array<int, 2> answer = {};
    if (pipe(answer.data()) != 0)
        return;
    m_process = fork();
    if (m_process == 0)
        holdLease(name.constData(), content, answer[1]);
    close(answer[1]);
    char holds = 'n';
    m_holdsLease = read(answer[0], &holds, 1) == 1 && holds == 'y';
    close(answer[0]);
}

LeaseHolder::~LeaseHolder()
{
    if (m_process <= 0)
        return;
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
}

#else

LeaseHolder::LeaseHolder(const QString & /*path*/, const QByteArray & /*content*/) {}

LeaseHolder::~LeaseHolder() = default;

#endif
