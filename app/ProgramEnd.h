#pragma once

class MainWindow;

/// Waits for the tasks of \a window once the event loop has returned \a exitCode.
///
/// A read from a network drive that does not answer cannot be interrupted. If a task still runs after two
/// seconds, the process ends at once with \a exitCode. No destructor runs, so nothing that the task uses is
/// freed. A scan writes nothing, so nothing is lost. GUI thread.
void finishTasksOrEndProcess(MainWindow &window, int exitCode);
