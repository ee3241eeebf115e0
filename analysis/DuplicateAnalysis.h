#pragma once

#include "analysis/DuplicateGroup.h"
#include "scan/AbandonCheck.h"

#include <QList>
#include <QStringList>

#include <functional>

/// Callbacks of findDuplicates(). All three must be set.
struct AnalysisCallbacks
{
    /// Called for each fingerprinted file, in ascending order of size, on the thread of findDuplicates(). The
    /// percentage rises from 33 to 66.
    std::function<void(int percent)> progress;
    /// Called after each fingerprinted size class with the number of files in groups so far, on the thread of
    /// findDuplicates().
    std::function<void(qsizetype files)> duplicatesFound;
    /// Called often, on several threads. True ends the analysis early, with no groups.
    AbandonCheck abandoned;
};

/// Groups the files at \a paths by fingerprint and marks all files of each group except the kept file.
///
/// Groups are in ascending byte order of their fingerprints, the files of a group in ascending order of size
/// and then in the order of \a paths. Files of a unique size are not opened. A path listed twice is a copy of
/// itself. A file that cannot be opened is in no group. Blocks; may be called on a thread of the global pool.
[[nodiscard]] QList<DuplicateGroup> findDuplicates(
    const QStringList &paths, const AnalysisCallbacks &callbacks);
