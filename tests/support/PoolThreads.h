#pragma once

#include <QtGlobal>

#include <functional>

/// Sets the number of threads of the global pool for its lifetime.
class PoolSize
{
public:
    explicit PoolSize(int threads);
    ~PoolSize();
    Q_DISABLE_COPY_MOVE(PoolSize)

private:
    const int m_before;
};

/// Runs \a task on \a copies threads of the global pool at the same time: none of them starts the task before
/// all are there. Aborts the program when they do not all return within half a minute, for a thread that
/// waits for ever would keep the program from ending as well.
void runOnPoolThreads(int copies, const std::function<void()> &task);
