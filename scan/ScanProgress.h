#pragma once

#include <QtGlobal>

#include <atomic>

/// \a scanned in per cent of \a total files, truncated. Exceeds 100 if files were added after the counting
/// pass. 0 if \a total is 0.
[[nodiscard]] int scannedPercent(qint32 scanned, qint32 total);

/// Limits the progress reports of one scan. A report is due 100 files after the last report of any scan, or
/// 800 ms after the last report of this scan. Not thread-safe.
class ReportThrottle
{
public:
    /// \a lastReportedCount is the number of scanned files at the last report. It outlives the scan.
    explicit ReportThrottle(std::atomic<qint32> &lastReportedCount);

    /// Whether a report is due after \a scanned files, \a now milliseconds after the start. If it is, counts
    /// it as made.
    [[nodiscard]] bool isDue(qint32 scanned, qint64 now);

private:
    std::atomic<qint32> &m_lastReportedCount;
    qint64 m_lastReport = 0;
};
