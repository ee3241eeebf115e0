#include "scan/ScanThreads.h"

#include <QThread>

#include <algorithm>

namespace {

/// More than there are cores: the threads mostly wait, and an unresponsive folder blocks its threads. A scan
/// uses as many threads as there are cores while it counts, then one.
int threadCount()
{
    return std::max(8, 2 * QThread::idealThreadCount());
}

/// Sets the size of the pool before any thread can use it.
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
