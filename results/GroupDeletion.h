#pragma once

#include "analysis/DuplicateGroup.h"

#include <QList>

/// Numbers of files that a deletion removed and failed to remove.
struct DeletionResult
{
    int deleted = 0;
    int failed = 0;
};

/// Returns true if any of \a groups has a marked file.
[[nodiscard]] bool hasMarkedFiles(const QList<DuplicateGroup> &groups);

/// Deletes the marked files of \a groups permanently, from the last group to the first, and removes them from
/// their groups. Removes groups with fewer than two remaining files; the others keep their order.
///
/// Kept deliberately: a file that could not be deleted leaves its group as well. The user sees it again only
/// after another scan.
[[nodiscard]] DeletionResult deleteMarkedFiles(QList<DuplicateGroup> &groups);
