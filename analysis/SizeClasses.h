#pragma once

#include "scan/AbandonCheck.h"

#include <QStringList>

#include <optional>
#include <vector>

/// Two or more files of equal size.
struct SizeClass
{
    /// Index of the first file in SizeClasses::candidates.
    qsizetype firstCandidate = 0;
    /// Number of files.
    qsizetype count = 0;
    /// Number of all smaller files, including those of a unique size.
    qsizetype smallerFiles = 0;
};

/// The files that share their size with another file.
struct SizeClasses
{
    /// In ascending order of size.
    std::vector<SizeClass> classes = {};
    /// Paths of the files of all classes, class by class. Each class is in the order of the input.
    QStringList candidates = {};
};

/// Splits the files at \a paths by size; a file that is gone has size 0. Reads the sizes on the global thread
/// pool. Blocks; may be called on a thread of that pool. \a abandoned is called before each file, on several
/// threads. Nothing if abandoned.
[[nodiscard]] std::optional<SizeClasses> splitBySize(const QStringList &paths, const AbandonCheck &abandoned);
