#pragma once

#include <QString>

/// Why a file is left alone.
struct Obstacle
{
    enum class Kind {
        NotAsReported, ///< the file does not match the report
        System,        ///< the system refuses the action or fails
        Interrupted,   ///< see interrupted()
    };

    Kind kind = Kind::NotAsReported;
    /// For users: a few words without a full stop.
    QString reason;
};
