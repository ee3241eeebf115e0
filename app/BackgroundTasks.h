#pragma once

#include <QDeadlineTimer>

#include <atomic>
#include <functional>
#include <memory>

/// Background tasks that hold a pointer to their owner, which waits for them before it is destroyed.
///
/// Used on the owner's thread only. The tasks only use its predicate abandoned().
class BackgroundTasks
{
public:
    BackgroundTasks();
    /// Calls finish() without a deadline.
    ~BackgroundTasks();
    Q_DISABLE_COPY_MOVE(BackgroundTasks)

    /// Queues \a task on the global thread pool, which moves it to scanThreads(), where it may block. A task
    /// that has not started when finish() is called never runs.
    void start(std::function<void()> task);

    /// Predicate for tasks, callable from any thread; true once finish() has been called.
    [[nodiscard]] std::function<bool()> abandoned() const;

    /// Makes abandoned() true and waits until all tasks have returned. Returns false if one still runs at the
    /// deadline.
    bool finish(QDeadlineTimer deadline = QDeadlineTimer(QDeadlineTimer::Forever));

private:
    struct State
    {
        std::atomic<bool> abandoned{false};
        std::atomic<int> running{0};
    };
    /// Shared with the tasks: finish() may return while the last task still accesses the counter.
    std::shared_ptr<State> m_state;
};
