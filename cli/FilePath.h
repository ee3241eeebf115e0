#pragma once

#include <QString>

/// \a path for Qt's file classes, which read a path that begins with a colon as a resource of the program.
[[nodiscard]] inline QString asFilePath(const QString &path)
{
    return path.startsWith(u':') ? QStringLiteral("./") + path : path;
}
