#pragma once

#include <QThreadPool>

#include <functional>

/// Sets the number of threads of \a pool for its lifetime.
class PoolSize
{
public:
    explicit PoolSize(int threads, QThreadPool &pool = *QThreadPool::globalInstance());
    ~PoolSize();
    Q_DISABLE_COPY_MOVE(PoolSize)

private:
    QThreadPool &m_pool;
    const int m_before;
};

/// Runs \a task on \a copies threads of the global pool at the same time: none of them starts the task before
/// all are there. Aborts the program when they do not all return within half a minute, for a thread that
/// waits for ever would keep the program from ending as well.
void runOnPoolThreads(int copies, const std::function<void()> &task);
