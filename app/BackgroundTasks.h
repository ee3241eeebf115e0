#pragma once

#include <QDeadlineTimer>

#include <atomic>
#include <functional>
#include <memory>

/// Background tasks that hold a pointer to their owner, so that the owner can outlive them.
///
/// Lives on the owner's thread. All that the tasks see of it is the predicate abandoned().
class BackgroundTasks
{
public:
    BackgroundTasks();
    /// Asks the running tasks to give up and waits until the last one has returned.
    ~BackgroundTasks();
    Q_DISABLE_COPY_MOVE(BackgroundTasks)

    /// Starts \a task by way of the global thread pool, which other tasks may keep busy, and runs it on one
    /// of scanThreads(): there it may wait as long as it takes.
    void start(std::function<void()> task);

    /// A question a task may ask from any thread, for as long as it runs: whether its owner is going away.
    [[nodiscard]] std::function<bool()> abandoned() const;

    /// Asks the running tasks to give up and waits for them; false if one still runs at the deadline.
    bool finish(QDeadlineTimer deadline = QDeadlineTimer(QDeadlineTimer::Forever));

private:
    struct State
    {
        std::atomic<bool> abandoned{false};
        std::atomic<int> running{0};
    };
    /// Shared with the tasks: the last of them still touches the counter when the waiting side may already go
    /// on.
    std::shared_ptr<State> m_state;
};
