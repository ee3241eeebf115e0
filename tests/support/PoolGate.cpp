#include "tests/support/PoolGate.h"

#include <QThreadPool>

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

void PoolGate::letWaitingTasksThrough()
{
    const std::shared_ptr<QSemaphore> key = std::move(m_key);
    close();
    key->release();
}

void PoolGate::open()
{
    if (m_key)
        m_key->release();
    m_key.reset();
}

void PoolGate::close()
{
    m_key = std::make_shared<QSemaphore>();
    QThreadPool::globalInstance()->start([key = m_key] { key->acquire(); });
}
