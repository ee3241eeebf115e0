#include "cli/HeldFile.h"

#include "cli/SystemError.h"

#include <QDir>

using Qt::StringLiterals::operator""_s;

namespace {

/// Why \a path cannot come from a report of this program.
std::optional<Obstacle> badPath(const QString &path)
{
    // The system would take the part before a NUL for the path.
    if (path.contains(QChar::Null) || !path.isValidUtf16())
        return Obstacle{Obstacle::Kind::NotAsReported, u"its path is no valid text"_s};
    // A path like "\\x" or "c:x" of Windows depends on the current drive or folder.
    if (!QDir::isAbsolutePath(path))
        return Obstacle{Obstacle::Kind::NotAsReported, u"its path is not absolute"_s};
    return std::nullopt;
}

} // namespace

HeldFile::HeldFile(const QString &path, const std::function<bool()> &abandoned)
    : m_path(path)
    , m_obstacle(badPath(path))
{
    if (!m_obstacle)
        m_obstacle = open(abandoned);
}
