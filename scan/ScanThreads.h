#pragma once

#include <QThreadPool>

/// The threads of the process on which scans wait: for the disk, and for the work that they have given to the
/// global pool. A fixed number, however many scans run at once; further ones wait for their turn.
///
/// Not the global pool itself, whose other users, Qt's painting among them, would wait along. What runs here
/// must not wait for something that still waits for a thread here.
QThreadPool &scanThreads();
