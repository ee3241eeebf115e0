#pragma once

#include <QByteArray>

/// A time as ISO 8601 text with milliseconds: "2026-11-20T09:00:00.123Z". \a sinceEpoch is in milliseconds
/// since 1970-01-01 UTC. A time outside the years 1 to 9999 becomes the nearest one inside.
[[nodiscard]] QByteArray timeText(qint64 sinceEpoch);
