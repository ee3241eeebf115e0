#include "app/BackgroundTasks.h"

#include <QScopeGuard>
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
    std::ignore = QtConcurrent::run(QThreadPool::globalInstance(), [state = m_state, task = std::move(task)] {
        const auto finished = qScopeGuard([&state] {
            --state->running;
            state->running.notify_all();
        });
        if (!state->abandoned)
            task();
    });
}

std::function<bool()> BackgroundTasks::abandoned() const
{
    return [state = m_state] { return state->abandoned.load(std::memory_order_relaxed); };
}

void BackgroundTasks::finish()
{
    m_state->abandoned = true;
    for (int running = m_state->running; running > 0; running = m_state->running)
        m_state->running.wait(running);
}
