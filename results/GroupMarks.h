#pragma once

#include "analysis/DuplicateGroup.h"

#include <QList>
#include <QSet>
#include <QString>

/// Saves the checked files of one category as marks of its groups.
///
/// \a shown lists the groups of the category, pointers into \a groups. \a checked lists the checked paths of
/// each loaded group row; row i shows shown[i]. Groups with the same files in the same order get the same
/// marks: those of the last of their rows.
///
/// Kept deliberately: groups without a row lose their marks but not their hasMarkedFiles. Delete then keeps
/// the files that the user has not seen.
void saveMarks(
    QList<DuplicateGroup> &groups, const QList<DuplicateGroup *> &shown, const QList<QSet<QString>> &checked);
