#pragma once

#include "analysis/DuplicateGroup.h"

#include <QList>

/// How many files a deletion removed and how many it could not remove.
struct DeletionResult
{
    int deleted = 0;
    int failed = 0;
};

/// Whether any of \a groups has a file marked for deletion.
bool hasMarkedFiles(const QList<DuplicateGroup> &groups);

/// Deletes the marked files of \a groups from the disk for good and takes them out of their groups, whether
/// the deletion of a file succeeded or not. Groups left with fewer than two files are taken out of the list;
/// the others keep their order and lose their marks. Goes through the groups from last to first.
DeletionResult deleteMarkedFiles(QList<DuplicateGroup> &groups);
