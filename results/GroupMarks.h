#pragma once

#include "analysis/DuplicateGroup.h"

#include <QList>
#include <QSet>
#include <QString>

/// Saves the checked rows of one category as marks of its groups.
///
/// \a shown are the groups of the category, pointers into \a groups. \a checked holds the checked paths of
/// each group row that is loaded; row i shows shown[i]. Kept deliberately: groups beyond the last row lose
/// their marks, so that a Delete leaves their unseen files alone; their hasMarkedFiles keeps its value.
/// Groups with the same files in the same order share their marks: the last row among them decides.
void saveMarks(
    QList<DuplicateGroup> &groups, const QList<DuplicateGroup *> &shown, const QList<QSet<QString>> &checked);
