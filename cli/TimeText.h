#pragma once

#include <QByteArray>

/// A time in milliseconds since 1970-01-01 UTC as ISO 8601 has it, with milliseconds:
/// "2026-11-20T09:00:00.123Z". Times outside the years 1 to 9999, which the format cannot express, become the
/// nearest one that it can.
[[nodiscard]] QByteArray timeText(qint64 sinceEpoch);
