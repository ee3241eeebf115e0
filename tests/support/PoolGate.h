#pragma once

#include <QSemaphore>

#include <atomic>
#include <memory>

/// Holds the global thread pool back, so that a scan can be looked at in any of its stages for as long as it
/// takes.
///
/// While it lives, the pool and the threads of the scans run their tasks one after the other in the order of
/// their start, and none before the gate opens. Destroying it opens the gate for good.
class PoolGate
{
public:
    PoolGate();
    ~PoolGate();
    Q_DISABLE_COPY_MOVE(PoolGate)

    /// Lets the tasks that wait now run to their end, and holds back those that are started later. No event
    /// is processed meanwhile: what the tasks queue for the GUI thread is still to come.
    void runQueuedTasks();
    void open();

    /// Whether the gate has opened by itself, as it does after half a minute: whoever was held up by it, a
    /// GUI thread that waits for the pool for instance, has to go on for the test to fail.
    [[nodiscard]] bool timedOut() const;

private:
    struct Lock
    {
        QSemaphore key;
        std::atomic<bool> timedOut{false};
    };

    void close();

    const int m_threads;
    const int m_scanThreads;
    /// Shared with the task that blocks the pool, which may outlive the gate for an instant.
    std::shared_ptr<Lock> m_lock;
};
