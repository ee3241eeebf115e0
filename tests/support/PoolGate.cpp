#include "tests/support/PoolGate.h"

#include "scan/ScanThreads.h"

#include <QThreadPool>

namespace {

constexpr int patienceMilliseconds = 30'000;

/// A scan starts on the global pool and continues on a scan thread, which waits for work of the pool.
void waitForAllTasks()
{
    QThreadPool::globalInstance()->waitForDone();
    scanThreads().waitForDone();
}

} // namespace

PoolGate::PoolGate()
    : m_threads(QThreadPool::globalInstance()->maxThreadCount())
    , m_scanThreads(scanThreads().maxThreadCount())
{
    waitForAllTasks();
    scanThreads().setMaxThreadCount(1);
    QThreadPool::globalInstance()->setMaxThreadCount(1);
    close();
}

PoolGate::~PoolGate()
{
    open();
    QThreadPool::globalInstance()->setMaxThreadCount(m_threads);
    scanThreads().setMaxThreadCount(m_scanThreads);
}

void PoolGate::runQueuedTasks()
{
    open();
    waitForAllTasks();
    close();
}

void PoolGate::open()
{
    m_lock->key.release();
}

bool PoolGate::timedOut() const
{
    return m_lock->timedOut;
}

void PoolGate::close()
{
    m_lock = std::make_shared<Lock>();
    QThreadPool::globalInstance()->start([lock = m_lock] {
        if (!lock->key.tryAcquire(1, patienceMilliseconds))
            lock->timedOut = true;
    });
}
