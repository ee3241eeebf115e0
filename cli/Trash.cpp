#include "cli/Trash.h"

#include "cli/TrashPlace.h"

using Qt::StringLiterals::operator""_s;

std::optional<Obstacle> moveToTrash(HeldFile &file)
{
    if (const auto obstacle = prepareTrash(file))
        return obstacle;
    const FileIdentity compared = file.identity();
    const QString origin = file.path();
    // Windows does not move a file that is open without FILE_SHARE_WRITE.
    file.content().close();
    QFile entry(origin);
    if (!entry.moveToTrash())
        return Obstacle{Obstacle::Kind::System, u"it cannot be moved to the trash: "_s + entry.errorString()};
    const QString pathInTrash = entry.fileName();
    const auto trashed = identityAt(pathInTrash);
    if (trashed && *trashed != compared) {
        const bool isBack = QFile::rename(pathInTrash, origin);
        return Obstacle{Obstacle::Kind::NotAsReported,
            isBack ? u"it was replaced while it was compared"_s
                   : u"another file took its place and is now %1"_s.arg(pathInTrash)};
    }
    correctTrashNote(pathInTrash, origin);
    return std::nullopt;
}
