#pragma once

#include "cli/Obstacle.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <variant>

/// Largest report that is read, in bytes. A file takes about 200 bytes and its path in a report, so a
/// million files with long paths fit; reading takes about four times as much memory.
inline constexpr qint64 largestReport = 512LL * 1024 * 1024;

/// Reads the report at \a path, or standard input for "-". What does not begin like a JSON object, what is
/// no text, and what is too large is refused before it is read to its end. \a abandoned is asked while
/// reading waits.
[[nodiscard]] std::variant<QByteArray, Obstacle> readReportBytes(
    const QString &path, const std::function<bool()> &abandoned);
