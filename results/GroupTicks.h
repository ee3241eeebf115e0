#pragma once

#include "analysis/DuplicateGroup.h"

#include <QList>
#include <QSet>
#include <QString>

/// Saves the ticks of the rows of one category into its groups.
///
/// \a shown are the groups of the category, pointers into \a groups. \a ticked holds the ticked paths of each
/// row that is loaded; row i shows shown[i]. Groups beyond the last row lose their ticks but keep
/// hasMarkedFiles as it was. Groups with the same files in the same order share their ticks: the last row
/// among them decides.
void saveTicks(
    QList<DuplicateGroup> &groups, const QList<DuplicateGroup *> &shown, const QList<QSet<QString>> &ticked);
