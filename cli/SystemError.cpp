#include "cli/SystemError.h"

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <cerrno>
#endif

using Qt::StringLiterals::operator""_s;

namespace {

/// Whether \a code means that there is no such file.
bool isMissing(int code)
{
#ifdef Q_OS_WIN
    return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND || code == ERROR_INVALID_NAME;
#else
    return code == ENOENT || code == ENOTDIR;
#endif
}

} // namespace

Obstacle systemObstacle(int code)
{
    if (isMissing(code))
        return {Obstacle::Kind::NotAsReported, u"it is missing"_s};
#ifdef Q_OS_UNIX
    if (code == ELOOP)
        return {Obstacle::Kind::NotAsReported, u"it is a link"_s};
#endif
    return {Obstacle::Kind::System, qt_error_string(code).trimmed()};
}
