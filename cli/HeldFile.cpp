#include "cli/HeldFile.h"

#include "cli/SystemError.h"

#include <QDir>

using Qt::StringLiterals::operator""_s;

namespace {

/// An obstacle if \a path cannot come from a report of this program.
std::optional<Obstacle> badPath(const QString &path)
{
    // The system would ignore a NUL and all that follows.
    if (path.contains(QChar::Null) || !path.isValidUtf16())
        return Obstacle{Obstacle::Kind::NotAsReported, u"its path is no valid text"_s};
    // On Windows, "\\x" depends on the current drive and "c:x" on the current folder.
    if (!QDir::isAbsolutePath(path))
        return Obstacle{Obstacle::Kind::NotAsReported, u"its path is not absolute"_s};
    return std::nullopt;
}

} // namespace

HeldFile::HeldFile(const QString &path, const AbandonCheck &abandoned)
    : m_path(path)
    , m_obstacle(badPath(path))
{
    if (!m_obstacle)
        m_obstacle = open(abandoned);
}
