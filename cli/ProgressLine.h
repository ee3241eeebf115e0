#pragma once

#include <QString>

/// How far a search is.
struct ProgressState
{
    /// Found so far.
    qint64 files = 0;
    /// While folders are still read, nothing is known of bytes.
    bool comparing = false;
    qint64 doneBytes = 0;
    qint64 totalBytes = 0;
    /// Since the comparison began.
    qint64 milliseconds = 0;
};

/// One line of at most \a width columns that shows \a state: a bar, per cent, bytes, files and time left.
/// What does not fit is left out, the bar first.
[[nodiscard]] QString progressLine(const ProgressState &state, int width);
