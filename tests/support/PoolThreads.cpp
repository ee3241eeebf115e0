#include "tests/support/PoolThreads.h"

#include <QSemaphore>
#include <QThreadPool>

#include <chrono>
#include <latch>
#include <memory>

namespace {

constexpr std::chrono::seconds patience(30);

} // namespace

PoolSize::PoolSize(int threads)
    : m_before(QThreadPool::globalInstance()->maxThreadCount())
{
    QThreadPool::globalInstance()->setMaxThreadCount(threads);
}

PoolSize::~PoolSize()
{
    QThreadPool::globalInstance()->setMaxThreadCount(m_before);
}

void runOnPoolThreads(int copies, const std::function<void()> &task)
{
    const auto allThere = std::make_shared<std::latch>(copies);
    const auto returned = std::make_shared<QSemaphore>();
    for (int i = 0; i < copies; ++i) {
        QThreadPool::globalInstance()->start([task, allThere, returned] {
            allThere->arrive_and_wait();
            task();
            returned->release();
        });
    }
    if (!returned->tryAcquire(copies, static_cast<int>(std::chrono::milliseconds(patience).count())))
        qFatal("A task on the thread pool hangs");
}
