#pragma once

#include "scan/AbandonCheck.h"

#include <QStringList>

/// The number of files that a FolderWalk of \a folders finds. Blocks. Free threads of scanThreads() help.
///
/// \a abandoned is called for every file and folder, on all of these threads. True ends the count early; the
/// result is then the number of files found so far.
[[nodiscard]] qint32 countFiles(const QStringList &folders, const AbandonCheck &abandoned);
