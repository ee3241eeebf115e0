#pragma once

#include <QThreadPool>

/// The thread pool for tasks that block: on the disk, or on work in the global pool. Its size is fixed, so
/// that tasks of many scans queue up instead of starting more threads.
///
/// Blocking tasks in the global pool would delay its other users, such as Qt's painting. A task in this pool
/// must not wait for another task that has not started yet.
[[nodiscard]] QThreadPool &scanThreads();
