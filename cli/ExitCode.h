#pragma once

/// Exit codes of the program, the least serious one first.
enum ExitCode : int {
    ExitDone = 0,
    /// Only with --fail-on-duplicates.
    ExitDuplicatesFound = 3,
    /// A file does not match the report.
    ExitRefused = 4,
    /// Something could not be read, written or acted on.
    ExitFailed = 1,
    ExitInterrupted = 130,
    ExitWrongUsage = 2,
};

/// The more serious one of \a a and \a b.
[[nodiscard]] ExitCode moreSerious(ExitCode a, ExitCode b);
