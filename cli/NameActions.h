#pragma once

#include "cli/HeldFile.h"
#include "cli/Obstacle.h"

#include <optional>

// The actions of `remove`, done through the open handles. Each function returns an obstacle if it leaves the
// candidate unchanged. The caller has compared the files and checked that their paths still lead to them.

/// Removes the candidate's name.
[[nodiscard]] std::optional<Obstacle> deleteFile(HeldFile &candidate);

/// Makes the candidate's name a hard link to the kept file. A file of that name exists at every moment: the
/// link gets a temporary name in the same folder (see Leftovers.h) and then replaces the candidate.
[[nodiscard]] std::optional<Obstacle> replaceByHardLink(const HeldFile &kept, HeldFile &candidate);

/// Makes the candidate share the blocks of the kept file. The kernel compares the bytes. The candidate keeps
/// its times.
[[nodiscard]] std::optional<Obstacle> shareBlocks(const HeldFile &kept, const HeldFile &candidate);

/// An obstacle if the file system does not share blocks. Changes nothing.
[[nodiscard]] std::optional<Obstacle> foreseeUnsharedBlocks(const HeldFile &kept, const HeldFile &candidate);
