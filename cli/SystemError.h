#pragma once

#include "cli/Obstacle.h"

/// The obstacle that an error code of the system stands for: errno, on Windows GetLastError(). A missing file
/// is not as reported; everything else is the system's.
[[nodiscard]] Obstacle systemObstacle(int code);
