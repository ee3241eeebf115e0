#pragma once

#include "cli/HeldFile.h"
#include "cli/Obstacle.h"

#include <optional>

/// Moves \a file to the trash of its volume. Returns an obstacle if there is no trash and none can be
/// created; the file is never deleted instead. If another file takes its path at the last moment, that file
/// is moved back.
[[nodiscard]] std::optional<Obstacle> moveToTrash(HeldFile &file);
