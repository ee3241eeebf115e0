#pragma once

#include "analysis/DuplicateGroup.h"

#include <QList>
#include <QString>

#include <functional>

/// What the analysis tells and asks its caller. All three must be set.
struct AnalysisCallbacks
{
    /// Once per fingerprinted file, in ascending order of size: 33 rising to 66 per cent. On the analysing
    /// thread.
    std::function<void(int percent)> progress;
    /// After each size class that was fingerprinted: how many files are known to have a copy by now. On the
    /// analysing thread.
    std::function<void(qsizetype files)> duplicatesFound;
    /// True ends the analysis early, with no groups. Asked often, on any thread.
    std::function<bool()> abandoned;
};

/// Finds the files among \a paths that have equal fingerprints and marks all but the copy to keep of each
/// group.
///
/// Files are split by exact size first and those of a unique size never opened. The groups come in ascending
/// byte order of their fingerprints; the files of a group in ascending size, then in the order of \a paths. A
/// path listed twice is its own copy. A file that cannot be opened is in no group. May run on a thread of the
/// global pool.
QList<DuplicateGroup> findDuplicates(const QList<QString> &paths, const AnalysisCallbacks &callbacks);
