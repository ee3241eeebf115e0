#pragma once

#include "cli/Obstacle.h"
#include "scan/AbandonCheck.h"

#include <QByteArray>
#include <QString>

#include <variant>

/// Largest report that is read, in bytes. A file takes its path and about 200 bytes in a report, so a million
/// files with long paths fit. Parsing takes about four times as much memory.
inline constexpr qint64 largestReport = 512LL * 1024 * 1024;

/// Reads the report at \a path, or standard input for "-". Stops early if the input does not begin like a
/// JSON object, is no text, or is too large, and as soon as \a abandoned returns true.
[[nodiscard]] std::variant<QByteArray, Obstacle> readReportBytes(
    const QString &path, const AbandonCheck &abandoned);
