#pragma once

#include <QString>

/// Why a file is left alone.
struct Obstacle
{
    enum class Kind {
        NotAsReported, ///< the file is not, or no longer, what the report says
        System,        ///< the system does not allow it, or cannot do it
        Interrupted,
    };

    Kind kind = Kind::NotAsReported;
    /// A few words without a full stop.
    QString reason;
};
