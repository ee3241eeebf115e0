#pragma once

#include "analysis/ContentGroups.h"
#include "cli/FindOptions.h"
#include "cli/Report.h"
#include "cli/SearchedFolders.h"
#include "cli/UniqueFiles.h"

/// Form of the paths in a report.
enum class PathForm {
    AsGiven, ///< begin with the folder as the user gave it
    Absolute,
};

/// Decides which file of each group is kept, and the actions of the others. \a groups are indexes into the
/// files of \a unique. The result is sorted by the bytes that each group would free, largest first, then by
/// the path of the kept file. A group begins with its kept file, and the others follow by path. Paths are
/// compared by their bytes, in the form \a form.
[[nodiscard]] QList<ReportGroup> reportGroups(const std::vector<std::vector<quint32>> &groups,
    const UniqueFiles &unique, const SearchedFolders &folders, KeepRule rule, PathForm form);

/// The files with the action Remove. The bytes of a file with several names count, although they become free
/// only when its last name is removed.
struct Removable
{
    qint64 files = 0;
    qint64 bytes = 0;
    /// Files with several names.
    qint64 filesWithFurtherNames = 0;
};

[[nodiscard]] Removable removableIn(const ReportGroup &group);
[[nodiscard]] Removable removableIn(const QList<ReportGroup> &groups);
