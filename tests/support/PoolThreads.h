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

/// Runs \a task on \a copies threads of the global pool at the same time. Aborts the program if they do not
/// all return within 30 seconds, because a hanging thread would also prevent the program from ending.
void runOnPoolThreads(int copies, const std::function<void()> &task);
