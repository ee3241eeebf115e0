#pragma once

#include "cli/HeldFile.h"
#include "cli/Obstacle.h"

#include <optional>

// What removal does to a file through the handles that it holds. Each function returns why the candidate is
// left as it was. The caller has compared the files and checked that their paths still lead to them.

/// Removes the candidate's name.
[[nodiscard]] std::optional<Obstacle> deleteFile(HeldFile &candidate);

/// Makes the candidate's name a further name of the kept file. There is no moment without a file of that
/// name: the new name is made beside it (see Leftovers.h) and takes its place.
[[nodiscard]] std::optional<Obstacle> replaceByHardLink(const HeldFile &kept, HeldFile &candidate);

/// Has the kernel compare both files and keep their bytes once. The candidate keeps its times.
[[nodiscard]] std::optional<Obstacle> shareBlocks(const HeldFile &kept, const HeldFile &candidate);

/// Why blocks cannot be shared, as far as the system tells beforehand.
[[nodiscard]] std::optional<Obstacle> foreseeUnsharedBlocks(const HeldFile &kept, const HeldFile &candidate);
