#pragma once

#include "analysis/ComparisonRun.h"

#include <functional>
#include <span>

/// Bytes from \a begin up to, and without, \a end.
struct ByteRange
{
    qint64 begin = 0;
    qint64 end = 0;

    [[nodiscard]] qint64 size() const
    {
        return end - begin;
    }
};

/// Compares the files of \a sets in a range of their bytes by reading them in step; a file that differs from
/// all others is read no further. Holds one file of each set open. Reports files that cannot be read, and
/// counts the range as dealt with for each set.
///
/// \a isSettled is asked again and again; once it is true the comparison ends early and the labels mean
/// nothing.
[[nodiscard]] ContentLabels compareInStep(ComparisonRun &run, std::span<const EqualFiles> sets,
    ByteRange range, const std::function<bool()> &isSettled);
