#pragma once

/// What the program ends with. The list is in order of weight: a later one wins over an earlier one.
enum ExitCode : int {
    ExitDone = 0,
    /// With --fail-on-duplicates.
    ExitDuplicatesFound = 3,
    /// A file was not what the report says.
    ExitRefused = 4,
    /// Something could not be read, written or acted on.
    ExitFailed = 1,
    ExitInterrupted = 130,
    ExitWrongUsage = 2,
};

/// The more serious one of \a a and \a b.
[[nodiscard]] ExitCode moreSerious(ExitCode a, ExitCode b);
