#pragma once

#include <QtGlobal>

#include <atomic>

/// The share of \a scanned in \a total files in per cent, truncated; above 100 when files were added since
/// they were counted, 0 when none was counted.
[[nodiscard]] int scannedPercent(qint32 scanned, qint32 total);

/// Decides when a progress report is due: when 100 more files were scanned than at the last report of any
/// scan, or 800 ms after this scan's last report. Any one thread.
class ReportThrottle
{
public:
    /// \a lastReportedCount is the number of files at the last report, which outlives the scan.
    explicit ReportThrottle(std::atomic<qint32> &lastReportedCount);

    /// Whether a report is due after \a scanned files, \a now milliseconds into the scan. If so, notes that
    /// it is made.
    [[nodiscard]] bool isDue(qint32 scanned, qint64 now);

private:
    std::atomic<qint32> &m_lastReportedCount;
    qint64 m_lastReport = 0;
};
