#pragma once

#include <QStringList>

#include <functional>

/// How many files a FolderWalk of \a folders finds. Runs on any one thread, helped by those of scanThreads()
/// that are free. \a abandoned is asked for every file and folder, on all of them; once it is true the count
/// ends early and the number means nothing.
qint32 countFiles(const QStringList &folders, const std::function<bool()> &abandoned);
