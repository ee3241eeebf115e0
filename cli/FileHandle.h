#pragma once

#include <QFile>

#include <windows.h>

/// The Windows handle of an open file.
[[nodiscard]] HANDLE handleOf(const QFile &file);
