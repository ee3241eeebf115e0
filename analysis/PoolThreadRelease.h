#pragma once

#include <QFuture>

/// For its lifetime, gives the current thread back to the global thread pool if it is one of the pool's own.
///
/// A pool thread that waits for work in its own pool takes a place that the work may need: with one thread,
/// or with as many waiting tasks as threads, nobody would be left to do it.
class PoolThreadRelease
{
public:
    PoolThreadRelease();
    ~PoolThreadRelease();
    Q_DISABLE_COPY_MOVE(PoolThreadRelease)

private:
    const bool m_released;
};

/// Waits for \a future without occupying a place in the global thread pool.
template <typename T>
void waitReleasingPoolThread(QFuture<T> &future)
{
    const PoolThreadRelease release;
    future.waitForFinished();
}
