#pragma once

#include "tests/support/CollectedFiles.h"

#include <QElapsedTimer>
#include <QList>
#include <QString>

#include <functional>

/// A call of the progress callback.
struct ScanReport
{
    QString path;
    int percent = 0;
    /// Number of files scanned when the report came.
    qint32 scanned = 0;
};

/// Runs a collection and records its reports.
struct RecordedScan
{
    /// A report is due after this time or after 100 files.
    static constexpr int reportMilliseconds = 800;

    explicit RecordedScan(const QStringList &folders, const ScanOptions &options = everyType())
    {
        QElapsedTimer clock;
        clock.start();
        collected = collectFiles(folders, options, callbacks());
        slow = clock.hasExpired(reportMilliseconds);
    }

    /// Runs \a inBetween after the counting pass.
    RecordedScan(const QStringList &folders, const std::function<void()> &inBetween)
    {
        CollectionCallbacks all = callbacks();
        all.counted = [counted = all.counted, &inBetween] {
            counted();
            inBetween();
        };
        collected = collectFiles(folders, everyType(), all);
    }

    [[nodiscard]] QList<int> percents() const
    {
        QList<int> result;
        for (const ScanReport &report : reports)
            result.append(report.percent);
        return result;
    }

    [[nodiscard]] QList<qint32> counts() const
    {
        QList<qint32> result;
        for (const ScanReport &report : reports)
            result.append(report.scanned);
        return result;
    }

    QStringList collected;
    QList<ScanReport> reports;
    int counted = 0;
    bool reportedBeforeCounted = false;
    /// Whether the collection was so slow that a report may have been due to time alone.
    bool slow = false;

private:
    CollectionCallbacks callbacks()
    {
        return {
            .counted = [this] { ++counted; },
            .progress =
                [this](const QString &path, int percent) {
                    reportedBeforeCounted = reportedBeforeCounted || counted == 0;
                    reports.append({path, percent, scannedFileCount});
                },
            .abandoned = [] { return false; },
        };
    }
};
