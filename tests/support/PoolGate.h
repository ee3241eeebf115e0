#pragma once

#include <QSemaphore>

#include <memory>

/// Holds the global thread pool back, so that a scan can be looked at in any of its stages for as long as it
/// takes.
///
/// While it lives, the pool runs its tasks one after the other in the order of their start, and none before
/// the gate opens. Destroying it opens the gate for good.
class PoolGate
{
public:
    PoolGate();
    ~PoolGate();
    Q_DISABLE_COPY_MOVE(PoolGate)

    /// Lets the tasks run that wait now, and holds back those that are started later.
    void letWaitingTasksThrough();
    void open();

private:
    void close();

    const int m_threads;
    /// Released to end the task that blocks the pool. Shared, since that task may outlive the gate for an
    /// instant.
    std::shared_ptr<QSemaphore> m_key;
};
