#include "tools/tour/PoolHold.h"

#include <QThreadPool>

PoolHold::PoolHold()
    : m_released(std::make_shared<std::atomic<bool>>(false))
{
    QThreadPool *const pool = QThreadPool::globalInstance();
    for (int i = 0; i < pool->maxThreadCount(); ++i)
        pool->start([released = m_released] { released->wait(false); });
}

PoolHold::~PoolHold()
{
    release();
}

void PoolHold::release()
{
    *m_released = true;
    m_released->notify_all();
}
