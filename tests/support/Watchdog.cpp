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
    // The debugger is a child of this process, which it could not look into otherwise.
    ::prctl(PR_SET_PTRACER, PR_SET_PTRACER_ANY, 0, 0, 0);
#endif
    // Stops this thread too, so no time limit here would help against the backtrace of an endless recursion.
    QProcess debugger;
    debugger.setProcessChannelMode(QProcess::MergedChannels);
    debugger.start(
        QStringLiteral("gdb"), {QStringLiteral("-nx"), QStringLiteral("-batch"), QStringLiteral("-p"),
                                   QString::number(QCoreApplication::applicationPid()), QStringLiteral("-ex"),
                                   QStringLiteral("thread apply all backtrace 60")});
    if (!debugger.waitForStarted()) {
        std::fputs("gdb is missing: nothing can show the stacks of the threads.\n", stderr);
        return;
    }
    if (!debugger.waitForFinished(debuggerMilliseconds))
        std::fputs("gdb did not come to an end; this is what it has shown so far.\n", stderr);
    std::fputs(debugger.readAll().constData(), stderr);
}

} // namespace

Watchdog::Watchdog(qint64 patienceMilliseconds)
    : m_patience(patienceMilliseconds)
{
    m_sinceSign.start();
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
    m_sinceSign.restart();
    m_doing = doing;
}

void Watchdog::run()
{
    QMutexLocker locker(&m_mutex);
    while (!m_ending) {
        const qint64 left = m_patience - m_sinceSign.elapsed();
        if (left <= 0) {
            std::fprintf(stderr, "No sign of life for %lld ms; the last was: %s\n",
                static_cast<long long>(m_patience), qPrintable(m_doing));
            writeStacks();
            // Not into the test framework's handler, which would look for the stacks once more.
            std::signal(SIGABRT, SIG_DFL);
            std::abort();
        }
        m_wake.wait(&m_mutex, static_cast<unsigned long>(left));
    }
}
