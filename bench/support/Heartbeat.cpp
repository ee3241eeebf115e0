#include "bench/support/Heartbeat.h"

#include <QDeadlineTimer>
#include <QEventLoop>

#include <algorithm>
#include <chrono>
#include <ctime>

using Qt::StringLiterals::operator""_s;
using std::chrono_literals::operator""min;
using std::chrono_literals::operator""ms;

namespace {

constexpr std::chrono::milliseconds interval = 5ms;
constexpr std::chrono::milliseconds settling = 100ms;
constexpr std::chrono::minutes patience = 10min;
constexpr qsizetype gapsToKeep = 5;

double milliseconds(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// CPU time of the current thread.
double threadMilliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

} // namespace

Heartbeat::Heartbeat()
{
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { beat(); });
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(interval);
}

void Heartbeat::startGap()
{
    m_sinceBeat.start();
    m_busyAtBeat = threadMilliseconds();
}

void Heartbeat::beat()
{
    const Gap gap{milliseconds(m_sinceBeat), threadMilliseconds() - m_busyAtBeat,
        milliseconds(m_sincePhase) / 1000, m_phases.last().name};
    startGap();
    if (Gap &longest = m_phases.last().longestGap; longest.milliseconds < gap.milliseconds)
        longest = gap;
    const auto place = std::find_if(m_longest.cbegin(), m_longest.cend(),
        [&gap](const Gap &other) { return other.milliseconds < gap.milliseconds; });
    m_longest.insert(place, gap);
    if (m_longest.size() > gapsToKeep)
        m_longest.removeLast();
}

/// Checks after each beat, so that the check does not add to a gap.
void Heartbeat::waitUntil(const std::function<bool()> &isOver)
{
    QEventLoop loop;
    QObject::connect(&m_timer, &QTimer::timeout, &loop, [&] {
        if (isOver())
            loop.quit();
    });
    loop.exec();
}

bool Heartbeat::run(
    const QString &phase, const std::function<void()> &start, const std::function<bool()> &isOver)
{
    m_phases.append({phase, 0, {}});
    m_sincePhase.start();
    startGap();
    m_timer.start();
    start();
    bool over = false;
    const QDeadlineTimer deadline(patience);
    waitUntil([&] {
        over = isOver();
        return over || deadline.hasExpired();
    });
    m_timer.stop();
    m_phases.last().seconds = milliseconds(m_sincePhase) / 1000;
    return over;
}

bool Heartbeat::run(const QString &phase, const std::function<void()> &start)
{
    QDeadlineTimer settled;
    return run(
        phase,
        [&] {
            start();
            settled.setRemainingTime(settling);
        },
        [&] { return settled.hasExpired(); });
}

QString Heartbeat::table() const
{
    QString text =
        QString::asprintf("%-36s %9s %16s %16s\n", "phase", "seconds", "longest gap, ms", "CPU time, ms");
    for (const Phase &phase : m_phases) {
        text += QString::asprintf("%-36s %9.2f %16.1f %16.1f\n", qPrintable(phase.name), phase.seconds,
            phase.longestGap.milliseconds, phase.longestGap.busy);
    }
    text += u"\nthe longest gaps\n"_s;
    for (const Gap &gap : m_longest) {
        text += QString::asprintf("%9.1f ms, CPU time %9.1f ms, at %.2f s of: %s\n", gap.milliseconds,
            gap.busy, gap.at, qPrintable(gap.phase));
    }
    return text;
}
