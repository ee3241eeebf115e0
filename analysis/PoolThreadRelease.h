#pragma once

#include <QFuture>

/// Lets the global thread pool start another thread while the current one waits, if the current thread
/// belongs to that pool.
///
/// Without it, waiting on a pool thread for work in the same pool is a deadlock as soon as all threads of the
/// pool wait.
class PoolThreadRelease
{
public:
    PoolThreadRelease();
    ~PoolThreadRelease();
    Q_DISABLE_COPY_MOVE(PoolThreadRelease)

private:
    const bool m_released;
};

/// Waits for \a future. Safe on a thread of the global pool.
template <typename T>
void waitReleasingPoolThread(QFuture<T> &future)
{
    const PoolThreadRelease release;
    future.waitForFinished();
}
