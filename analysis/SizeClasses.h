#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <vector>

/// Files split by their exact sizes.
struct SizeClasses
{
    /// How many files there are of each size, in ascending order of size.
    std::vector<qsizetype> counts;
    /// The files of all sizes that two or more files have, in ascending order of size; of equal size in the
    /// order in which they were given.
    QList<QString> candidates;
};

/// Splits the files at \a paths by size; a file that is gone counts as empty. Asks for the sizes on the
/// global thread pool, of which the current thread may be one. \a abandoned is asked before each file, on any
/// thread; once it is true the classes are of no use.
SizeClasses splitBySize(const QList<QString> &paths, const std::function<bool()> &abandoned);
