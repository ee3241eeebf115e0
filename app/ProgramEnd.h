#pragma once

class MainWindow;

/// Waits for the tasks of \a window after the event loop has returned \a exitCode. GUI thread.
///
/// A read from a network drive that does not respond cannot be interrupted. If a task still runs after two
/// seconds, the process exits immediately with \a exitCode. No destructor runs, so nothing that the task uses
/// is freed. A scan writes nothing, so nothing is lost.
void finishTasksOrEndProcess(MainWindow &window, int exitCode);
