#pragma once

/// From now on SIGINT, SIGTERM and SIGHUP, or Ctrl-C and the closing of the console on Windows, only set what
/// interrupted() returns. System calls that wait are interrupted, not restarted.
void catchInterruptions();

/// Whether the user asked the program to end. Any thread.
[[nodiscard]] bool interrupted();
