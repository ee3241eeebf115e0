#pragma once

#include <QString>

#include <string>

/// \a path as the functions of Windows take it, with the prefix that lifts the limit of 260 characters. A
/// relative path starts at the current folder. Windows does not resolve ".." behind the prefix, so it is
/// resolved here. Any thread.
///
/// Source: "Maximum Path Length Limitation", Windows documentation.
[[nodiscard]] std::wstring nativePath(const QString &path);
