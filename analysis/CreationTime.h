#pragma once

#include <QString>

#include <optional>

/// The creation time of the file at \a path in milliseconds since 1970-01-01 UTC, or its modification time if
/// the file system has no creation times. Nothing if the file is gone. Follows links. Thread-safe.
[[nodiscard]] std::optional<qint64> creationTime(const QString &path);
