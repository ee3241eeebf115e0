#pragma once

#include <QString>

#include <string>

/// \a path in the form for Windows functions, with the prefix that lifts the limit of 260 characters. A
/// relative path starts at the current folder. Resolves "..", because Windows does not do so after the
/// prefix. Callable from any thread.
///
/// Source: "Maximum Path Length Limitation", Windows documentation.
[[nodiscard]] std::wstring nativePath(const QString &path);
