#pragma once

#include "scan/AbandonCheck.h"
#include "scan/ScanOptions.h"

#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>

// Kept deliberately: one set of counters for the whole process. Scans that overlap count into the same
// numbers, and the scan page shows these.
// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): shared by all scans.

/// Files of the current scan that passed the location and hidden-file rules. Thread-safe.
extern std::atomic<qint32> scannedFileCount;
/// Files of the current scan that were added to the result. Thread-safe.
extern std::atomic<qint32> acceptedFileCount;
/// scannedFileCount at the last progress report. Kept deliberately: never reset, so the first report of a
/// scan comes after 800 ms if the previous scan ended with a higher count. Atomic because scans may overlap.
extern std::atomic<qint32> lastReportedCount;

// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

/// Callbacks of collectFiles(). All three must be set.
struct CollectionCallbacks
{
    /// Called once, after the counting pass, on the thread of collectFiles().
    std::function<void()> counted;
    /// Called after every 100 files or 800 ms, on the thread of collectFiles(). \a path is the last file that
    /// was scanned. \a percent is the scanned share of the counted files; it exceeds 100 if files were added
    /// after the counting pass.
    std::function<void(const QString &path, int percent)> progress;
    /// Called for every file and folder, on several threads. True ends the walk early; the result is then
    /// what was collected so far.
    AbandonCheck abandoned;
};

/// Walks \a folders twice, first to count the files, then to collect them. Returns the paths of the files
/// that the rules of \a options accept, in the order of the walk.
///
/// Links are not followed and hidden entries not listed. A folder listed twice is walked twice; a folder that
/// cannot be read yields no files. Blocks. Free threads of scanThreads() help with the counting.
[[nodiscard]] QStringList collectFiles(
    const QStringList &folders, const ScanOptions &options, const CollectionCallbacks &callbacks);
