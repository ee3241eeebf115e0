#include "scan/ScanThreads.h"

#include <QThread>

#include <algorithm>

namespace {

/// More than there are cores: the threads mostly wait, and a folder that does not answer keeps its threads.
/// Each scan takes as many as there are cores while it counts, then one.
int threadCount()
{
    return std::max(8, 2 * QThread::idealThreadCount());
}

/// So that its size is set before any thread can use it.
struct ScanThreadPool
{
    ScanThreadPool()
    {
        pool.setMaxThreadCount(threadCount());
    }

    QThreadPool pool;
};

} // namespace

QThreadPool &scanThreads()
{
    static ScanThreadPool threads;
    return threads.pool;
}
