#pragma once

#include <QString>

/// \a path as Qt's file classes take it: they take one that begins with a colon for a resource of the
/// program.
[[nodiscard]] inline QString asFilePath(const QString &path)
{
    return path.startsWith(u':') ? QStringLiteral("./") + path : path;
}
