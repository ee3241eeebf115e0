#pragma once

#include <QString>

/// The whole of \a path as plain text for a tool tip; a long path is broken into lines behind its separators.
[[nodiscard]] QString pathToolTip(const QString &path);
