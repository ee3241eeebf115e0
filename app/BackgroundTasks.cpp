#include "app/BackgroundTasks.h"

#include "scan/ScanThreads.h"

#include <QScopeGuard>
#include <QThread>
#include <QThreadPool>
#include <QtConcurrentRun>

#include <tuple>

BackgroundTasks::BackgroundTasks()
    : m_state(std::make_shared<State>())
{
}

BackgroundTasks::~BackgroundTasks()
{
    finish();
}

void BackgroundTasks::start(std::function<void()> task)
{
    ++m_state->running;
    const auto runTask = [state = m_state, task = std::move(task)] {
        const auto finished = qScopeGuard([&state] { --state->running; });
        if (!state->abandoned)
            task();
    };
    std::ignore =
        QtConcurrent::run(QThreadPool::globalInstance(), [runTask] { scanThreads().start(runTask); });
}

std::function<bool()> BackgroundTasks::abandoned() const
{
    return [state = m_state] { return state->abandoned.load(std::memory_order_relaxed); };
}

bool BackgroundTasks::finish(QDeadlineTimer deadline)
{
    m_state->abandoned = true;
    // Polls, because std::atomic::wait() of MinGW (GCC 12) can miss the notification and never return.
    while (m_state->running > 0 && !deadline.hasExpired())
        QThread::msleep(1);
    return m_state->running == 0;
}
