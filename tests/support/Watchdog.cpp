#include "tests/support/Watchdog.h"

#include <QCoreApplication>
#include <QProcess>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

namespace {

constexpr int debuggerMilliseconds = 60'000;

void writeStacks()
{
#ifdef Q_OS_LINUX
    // Allows the debugger, a child of this process, to attach to it.
    ::prctl(PR_SET_PTRACER, PR_SET_PTRACER_ANY, 0, 0, 0);
#endif
    // gdb stops this thread as well, so only a limit on the frames ends the backtrace of an infinite
    // recursion.
    QProcess debugger;
    debugger.setProcessChannelMode(QProcess::MergedChannels);
    debugger.start(
        QStringLiteral("gdb"), {QStringLiteral("-nx"), QStringLiteral("-batch"), QStringLiteral("-p"),
                                   QString::number(QCoreApplication::applicationPid()), QStringLiteral("-ex"),
                                   QStringLiteral("thread apply all backtrace 60")});
    if (!debugger.waitForStarted()) {
        std::fputs("gdb is not installed, so the stacks of the threads cannot be shown.\n", stderr);
        return;
    }
    if (!debugger.waitForFinished(debuggerMilliseconds))
        std::fputs("gdb did not finish. Its output so far:\n", stderr);
    std::fputs(debugger.readAll().constData(), stderr);
}

} // namespace

Watchdog::Watchdog(qint64 patienceMilliseconds)
    : m_patience(patienceMilliseconds)
{
    m_sinceAlive.start();
    start();
}

Watchdog::~Watchdog()
{
    {
        const QMutexLocker locker(&m_mutex);
        m_ending = true;
    }
    m_wake.wakeAll();
    wait();
}

void Watchdog::alive(const QString &doing)
{
    const QMutexLocker locker(&m_mutex);
    m_sinceAlive.restart();
    m_doing = doing;
}

void Watchdog::run()
{
    QMutexLocker locker(&m_mutex);
    while (!m_ending) {
        const qint64 left = m_patience - m_sinceAlive.elapsed();
        if (left <= 0) {
            std::fprintf(stderr, "No call of alive() for %lld ms. The last one: %s\n",
                static_cast<long long>(m_patience), qPrintable(m_doing));
            writeStacks();
            // Skips the handler of the test framework, which would print the stacks again.
            std::signal(SIGABRT, SIG_DFL);
            std::abort();
        }
        m_wake.wait(&m_mutex, static_cast<unsigned long>(left));
    }
}
