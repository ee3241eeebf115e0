#pragma once

#include "scan/ScanOptions.h"

#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>

// Shared by every scan of the process: a scan that is started while another one still runs counts into the
// same numbers.
// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): that is what they are for.

/// Files of the current scan that passed the location and hidden-file rules. Any thread.
extern std::atomic<qint32> scannedFileCount;
/// Files of the current scan that were added to the result. Any thread.
extern std::atomic<qint32> acceptedFileCount;
/// scannedFileCount at the last progress report. Never reset, so a scan that starts below the mark of the one
/// before reports by time alone until it has passed the mark. Atomic only because two scans may overlap.
extern std::atomic<qint32> lastReportedCount;

// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

/// What the walk tells its caller. All three must be set.
struct CollectionCallbacks
{
    /// Once, after the counting pass, on the walking thread.
    std::function<void()> counted;
    /// Each time 100 more files were scanned or 800 ms have passed: the file's path as the walk returned it,
    /// and the scanned share of the counted files in per cent, which exceeds 100 when files were added since.
    /// On the walking thread.
    std::function<void(const QString &path, int percent)> progress;
    /// Asked for every file and folder, on several threads at once; true ends the walk early with whatever
    /// was collected so far.
    std::function<bool()> abandoned;
};

/// Walks \a folders in order, twice (to count, then to collect), and returns the paths of the files that the
/// rules of \a options let through, in the order of the walk. Links are never followed and hidden entries
/// never entered. A folder listed twice is walked twice; what cannot be read yields nothing. Runs on any one
/// thread, with further ones to help it count.
QStringList collectFiles(
    const QStringList &folders, const ScanOptions &options, const CollectionCallbacks &callbacks);
