#pragma once

#include "cli/StandardOutput.h"

#include <QFile>
#include <QString>

/// Opens the device or pipe at \a path for writing as \a device. Waits until a pipe has a reader, unless
/// interrupted(). On failure, sets \a reason to the message of the system.
[[nodiscard]] WriteResult openDevice(const QString &path, QFile &device, QString &reason);
