#pragma once

#include <QString>

#include <optional>

/// When the file at \a path was created, in milliseconds since 1970-01-01 UTC: its birth time, or its last
/// modification time where the file system keeps no birth times. Links are followed. Nothing when the file is
/// gone, which is not the same as time 0. Any thread.
std::optional<qint64> creationTime(const QString &path);
