#pragma once

#include <QStringList>

#include <functional>

/// How many files a ReadAheadWalk of \a folders finds. Runs on any one thread, with further ones to help.
/// \a abandoned is asked for every file and folder, on all of them; once it is true the count ends early and
/// the number is of no use.
qint32 countFiles(const QStringList &folders, const std::function<bool()> &abandoned);
