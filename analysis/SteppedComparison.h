#pragma once

#include "analysis/ComparisonRun.h"
#include "scan/AbandonCheck.h"

#include <optional>
#include <span>

/// A range of bytes, without the byte at end.
struct ByteRange
{
    qint64 begin = 0;
    qint64 end = 0;

    [[nodiscard]] qint64 size() const
    {
        return end - begin;
    }
};

/// Compares the first files of \a sets within \a range, block by block, and stops reading a file once it
/// differs from all others. Keeps one file of each set open. Reports unreadable files and the progress of
/// each set to \a run.
///
/// \a isSettled is called before each block; true ends the comparison early. Nothing if it ended early or the
/// run was abandoned.
[[nodiscard]] std::optional<ContentLabels> compareInStep(
    ComparisonRun &run, std::span<const EqualFiles> sets, ByteRange range, const AbandonCheck &isSettled);
