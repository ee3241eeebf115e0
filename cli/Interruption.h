#pragma once

/// Installs handlers for SIGINT, SIGTERM and SIGHUP; on Windows for Ctrl-C and the closing of the console.
/// After such an event, interrupted() returns true. The handlers interrupt blocking system calls.
void catchInterruptions();

/// Whether the program was asked to end. Callable from any thread.
[[nodiscard]] bool interrupted();
