#include "cli/NameActions.h"

#include "cli/Leftovers.h"
#include "cli/SystemError.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

using Qt::StringLiterals::operator""_s;

namespace {

Obstacle lastError()
{
    return systemObstacle(errno);
}

/// A hard link to the kept file with a temporary name in the folder of the candidate. The destructor removes
/// the name.
class TemporaryLink
{
public:
    TemporaryLink(const HeldFile &kept, int folder)
        : m_folder(folder)
        , m_name(QFile::encodeName(temporaryName()))
    {
        m_isMade = ::linkat(kept.folder(), kept.name().constData(), m_folder, m_name.constData(), 0) == 0;
        if (!m_isMade)
            m_obstacle = lastError();
        else if (!leadsTo(kept))
            m_obstacle = {Obstacle::Kind::NotAsReported, u"the kept file was replaced"_s};
    }

    ~TemporaryLink()
    {
        // Needed after a successful moveTo() too: rename() does nothing if both names lead to one file.
        if (m_isMade)
            (void)::unlinkat(m_folder, m_name.constData(), 0);
    }

    Q_DISABLE_COPY_MOVE(TemporaryLink)

    [[nodiscard]] const std::optional<Obstacle> &obstacle() const
    {
        return m_obstacle;
    }

    [[nodiscard]] bool moveTo(const QByteArray &name) const
    {
        return ::renameat(m_folder, m_name.constData(), m_folder, name.constData()) == 0;
    }

private:
    [[nodiscard]] bool leadsTo(const HeldFile &kept) const
    {
        struct stat status = {};
        return ::fstatat(m_folder, m_name.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
               FileIdentity{status.st_dev, status.st_ino} == kept.identity();
    }

    const int m_folder;
    const QByteArray m_name;
    bool m_isMade = false;
    std::optional<Obstacle> m_obstacle;
};

} // namespace

std::optional<Obstacle> deleteFile(HeldFile &candidate)
{
    if (::unlinkat(candidate.folder(), candidate.name().constData(), 0) == 0)
        return std::nullopt;
    return lastError();
}

std::optional<Obstacle> replaceByHardLink(const HeldFile &kept, HeldFile &candidate)
{
    const TemporaryLink link(kept, candidate.folder());
    if (link.obstacle())
        return link.obstacle();
    if (const auto obstacle = candidate.change())
        return obstacle;
    if (link.moveTo(candidate.name()))
        return std::nullopt;
    return lastError();
}
