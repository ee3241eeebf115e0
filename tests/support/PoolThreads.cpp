#include "tests/support/PoolThreads.h"

#include <QSemaphore>
#include <QThreadPool>

#include <chrono>
#include <memory>

namespace {

constexpr std::chrono::seconds patience(30);

} // namespace

PoolSize::PoolSize(int threads, QThreadPool &pool)
    : m_pool(pool)
    , m_before(pool.maxThreadCount())
{
    m_pool.setMaxThreadCount(threads);
}

PoolSize::~PoolSize()
{
    m_pool.setMaxThreadCount(m_before);
}

void runOnPoolThreads(int copies, const std::function<void()> &task)
{
    // Not std::latch: that of MinGW sometimes misses a wake-up.
    const auto arrived = std::make_shared<QSemaphore>();
    const auto started = std::make_shared<QSemaphore>();
    const auto returned = std::make_shared<QSemaphore>();
    for (int i = 0; i < copies; ++i) {
        QThreadPool::globalInstance()->start([task, arrived, started, returned] {
            arrived->release();
            started->acquire();
            task();
            returned->release();
        });
    }
    const auto timeout = static_cast<int>(std::chrono::milliseconds(patience).count());
    const bool allArrived = arrived->tryAcquire(copies, timeout);
    started->release(copies);
    if (!allArrived || !returned->tryAcquire(copies, timeout))
        qFatal("A task on the thread pool hangs");
}
