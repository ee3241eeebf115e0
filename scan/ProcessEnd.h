#pragma once

/// Ends the process with \a exitCode. Runs no destructor, flushes no stream and waits for no thread. Any
/// thread.
[[noreturn]] void endProcess(int exitCode);

/// Returns \a exitCode as the result of main(), after everything that main() owns is gone. On Windows,
/// flushes the standard streams and ends the process instead of returning.
///
/// A normal end stops the other threads there and then runs the exit code of the libraries. A pool thread
/// that is stopped while it ends keeps a lock of MinGW's thread library (winpthreads, GCC 12), and the exit
/// code waits for that lock forever.
int leaveMain(int exitCode);
