#pragma once

/// Ends the process with \a exitCode. Runs no destructor, flushes no stream and waits for no thread.
/// Thread-safe.
[[noreturn]] void endProcess(int exitCode);

/// Returns \a exitCode, as the result of main(). On Windows, flushes the standard streams and ends the
/// process instead of returning. Call it when all objects of main() have been destroyed.
///
/// If main() returns on Windows, the system stops the other threads and then runs the exit handlers of the
/// libraries. A pool thread that is stopped while it exits keeps a lock of MinGW's thread library
/// (winpthreads, GCC 12), and an exit handler waits for that lock forever.
int leaveMain(int exitCode);
