#pragma once

#include "cli/HeldFile.h"
#include "cli/Obstacle.h"

#include <optional>

/// Moves \a file to the trash of its volume. It is never deleted instead: where there is no trash, and none
/// can be made, it stays where it is. If another file has taken its path at the last moment, that one is put
/// back.
[[nodiscard]] std::optional<Obstacle> moveToTrash(HeldFile &file);
