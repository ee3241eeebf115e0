#include "tests/support/PoolGate.h"

#include <QThreadPool>

namespace {

constexpr int patienceMilliseconds = 30'000;

} // namespace

PoolGate::PoolGate()
    : m_threads(QThreadPool::globalInstance()->maxThreadCount())
{
    QThreadPool::globalInstance()->waitForDone();
    QThreadPool::globalInstance()->setMaxThreadCount(1);
    close();
}

PoolGate::~PoolGate()
{
    open();
    QThreadPool::globalInstance()->setMaxThreadCount(m_threads);
}

void PoolGate::runWaitingTasks()
{
    open();
    QThreadPool::globalInstance()->waitForDone();
    close();
}

void PoolGate::open()
{
    m_lock->key.release();
}

bool PoolGate::gaveUp() const
{
    return m_lock->gaveUp;
}

void PoolGate::close()
{
    m_lock = std::make_shared<Lock>();
    QThreadPool::globalInstance()->start([lock = m_lock] {
        if (!lock->key.tryAcquire(1, patienceMilliseconds))
            lock->gaveUp = true;
    });
}
