#include "analysis/PoolThreadRelease.h"

#include <QThread>
#include <QThreadPool>

PoolThreadRelease::PoolThreadRelease()
    : m_released(QThreadPool::globalInstance()->contains(QThread::currentThread()))
{
    if (m_released)
        QThreadPool::globalInstance()->releaseThread();
}

PoolThreadRelease::~PoolThreadRelease()
{
    if (m_released)
        QThreadPool::globalInstance()->reserveThread();
}
