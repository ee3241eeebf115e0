#pragma once

#include "cli/HeldFile.h"
#include "cli/Obstacle.h"

#include <QString>

#include <optional>

/// What `remove` does to a copy.
enum class RemovalAction {
    Trash,    ///< moves it to the trash of its volume
    Delete,   ///< deletes it
    HardLink, ///< replaces it with a hard link to the kept file
    Reflink,  ///< makes it share the blocks of the kept file
};

/// "trash", "delete", "hardlink" or "reflink".
[[nodiscard]] QString nameOf(RemovalAction action);
/// Nothing if there is no such action.
[[nodiscard]] std::optional<RemovalAction> removalActionNamed(const QString &name);

/// An obstacle to \a action that can be detected without changing anything.
[[nodiscard]] std::optional<Obstacle> foreseeObstacle(
    RemovalAction action, const HeldFile &kept, const HeldFile &candidate);

/// Does \a action to \a candidate, which must have the same bytes as \a kept. Checks first that both paths
/// still lead to these files. Returns an obstacle if the candidate is unchanged.
[[nodiscard]] std::optional<Obstacle> act(RemovalAction action, const HeldFile &kept, HeldFile &candidate);
