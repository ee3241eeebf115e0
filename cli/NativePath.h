#pragma once

#include <QFile>
#include <QString>

#include <string>

#include <windows.h>

/// \a path, absolute, as the functions of Windows take it when it is longer than 260 characters.
[[nodiscard]] std::wstring nativePath(const QString &path);

/// The handle of Windows behind an open file.
[[nodiscard]] HANDLE handleOf(const QFile &file);
