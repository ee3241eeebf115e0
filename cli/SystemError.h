#pragma once

#include "cli/Obstacle.h"

/// The obstacle for an error code of the system: errno, on Windows GetLastError(). A missing file and a link
/// are NotAsReported, all other errors are System.
[[nodiscard]] Obstacle systemObstacle(int code);
