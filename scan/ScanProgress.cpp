#include "scan/ScanProgress.h"

namespace {

// Short enough that the page looks alive, long enough not to flood the event queue of the GUI thread.
constexpr qint32 reportEveryFiles = 100;
constexpr qint64 reportEveryMilliseconds = 800;

} // namespace

int scannedPercent(qint32 scanned, qint32 total)
{
    return total > 0 ? static_cast<int>(qint64(scanned) * 100 / total) : 0;
}

ReportThrottle::ReportThrottle(std::atomic<qint32> &lastReportedCount)
    : m_lastReportedCount(lastReportedCount)
{
}

bool ReportThrottle::isDue(qint32 scanned, qint64 now)
{
    if (scanned - m_lastReportedCount < reportEveryFiles && now - m_lastReport < reportEveryMilliseconds)
        return false;
    m_lastReportedCount = scanned;
    m_lastReport = now;
    return true;
}
