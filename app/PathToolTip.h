#pragma once

#include <QString>

/// Returns the whole \a path as text for a tool tip. Breaks a long path into lines after its separators.
[[nodiscard]] QString pathToolTip(const QString &path);
