#pragma once

#include "cli/HeldFile.h"
#include "cli/Obstacle.h"

#include <QString>

#include <optional>

/// What is done to a copy.
enum class RemovalAction {
    Trash,
    Delete,
    HardLink, ///< becomes a further name of the kept file
    Reflink,  ///< shares the blocks of the kept file
};

/// "trash", "delete", "hardlink" or "reflink".
[[nodiscard]] QString nameOf(RemovalAction action);
/// Nothing when there is no such action.
[[nodiscard]] std::optional<RemovalAction> removalActionNamed(const QString &name);

/// Why \a action cannot be done, as far as the system tells without changing anything.
[[nodiscard]] std::optional<Obstacle> foreseeObstacle(
    RemovalAction action, const HeldFile &kept, const HeldFile &candidate);

/// Does \a action to \a candidate, whose bytes are those of \a kept. Checks first that both paths still lead
/// to these files. Returns why the candidate is left as it was.
[[nodiscard]] std::optional<Obstacle> act(RemovalAction action, const HeldFile &kept, HeldFile &candidate);
