#pragma once

#include <QFile>

#include <windows.h>

/// The handle of Windows behind an open file.
[[nodiscard]] HANDLE handleOf(const QFile &file);
