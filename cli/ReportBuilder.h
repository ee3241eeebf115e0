#pragma once

#include "analysis/ContentGroups.h"
#include "cli/FindOptions.h"
#include "cli/Report.h"
#include "cli/SearchedFolders.h"
#include "cli/UniqueFiles.h"

/// Which paths a report holds.
enum class PathForm {
    AsGiven, ///< begin with the folder as the user gave it
    Absolute,
};

/// Decides which file of each of \a groups (indexes into the files of \a unique) is kept and what becomes of
/// the others. Groups are ordered by the bytes that they would free, largest first, then by the kept path; a
/// group begins with its kept file, the others follow by path. Paths are compared by their bytes.
[[nodiscard]] QList<ReportGroup> reportGroups(const std::vector<std::vector<quint32>> &groups,
    const UniqueFiles &unique, const SearchedFolders &folders, KeepRule rule, PathForm form);

/// Bytes and files that removing all that is offered would free. A file with names that are not listed frees
/// none until the last of them goes; it is counted all the same.
struct Removable
{
    qint64 files = 0;
    qint64 bytes = 0;
    /// How many of the files have several names.
    qint64 filesWithFurtherNames = 0;
};

[[nodiscard]] Removable removableIn(const ReportGroup &group);
[[nodiscard]] Removable removableIn(const QList<ReportGroup> &groups);
