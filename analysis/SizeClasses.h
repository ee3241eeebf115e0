#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <vector>

/// Files split by their exact sizes.
struct SizeClasses
{
    /// Number of files of each size, in ascending order of size.
    std::vector<qsizetype> counts;
    /// Paths of the files that share their size with another file, in ascending order of size, then in the
    /// order of the input.
    QList<QString> candidates;
};

/// Splits the files at \a paths by size; a file that is gone has size 0. Reads the sizes on the global thread
/// pool. Blocks; may be called on a thread of that pool. \a abandoned is called before each file, on several
/// threads; once it returns true, the classes are meaningless.
SizeClasses splitBySize(const QList<QString> &paths, const std::function<bool()> &abandoned);
