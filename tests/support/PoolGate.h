#pragma once

#include <QSemaphore>

#include <atomic>
#include <memory>

/// Blocks the global thread pool until released, so that a test can inspect a stage of a scan.
///
/// During its lifetime the pool and the scan threads run one task at a time, in the order of their start, and
/// none before the gate opens. The destructor opens the gate.
class PoolGate
{
public:
    PoolGate();
    ~PoolGate();
    Q_DISABLE_COPY_MOVE(PoolGate)

    /// Runs the tasks that are queued now and blocks later ones. Processes no events: calls that the tasks
    /// queue for the GUI thread stay pending.
    void runQueuedTasks();
    void open();

    /// True if the gate has opened by itself after 30 seconds. Without this time limit, a test whose GUI
    /// thread waits for the pool would hang instead of failing.
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
    /// Shared with the task that blocks the pool, which may outlive this object briefly.
    std::shared_ptr<Lock> m_lock;
};
