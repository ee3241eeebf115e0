#include "cli/RemovalAction.h"

#include "cli/NameActions.h"
#include "cli/Trash.h"

using Qt::StringLiterals::operator""_s;

QString nameOf(RemovalAction action)
{
    switch (action) {
    case RemovalAction::Delete:
        return u"delete"_s;
    case RemovalAction::HardLink:
        return u"hardlink"_s;
    case RemovalAction::Reflink:
        return u"reflink"_s;
    case RemovalAction::Trash:
        break;
    }
    return u"trash"_s;
}

std::optional<RemovalAction> removalActionNamed(const QString &name)
{
    for (const auto action :
        {RemovalAction::Trash, RemovalAction::Delete, RemovalAction::HardLink, RemovalAction::Reflink}) {
        if (nameOf(action) == name)
            return action;
    }
    return std::nullopt;
}

std::optional<Obstacle> foreseeObstacle(RemovalAction action, const HeldFile &kept, const HeldFile &candidate)
{
    const bool needsOneVolume = action == RemovalAction::HardLink || action == RemovalAction::Reflink;
    if (needsOneVolume && kept.identity().device != candidate.identity().device)
        return Obstacle{Obstacle::Kind::System, u"it is on another volume than the kept file"_s};
    if (action == RemovalAction::Reflink)
        return foreseeUnsharedBlocks(kept, candidate);
    return candidate.lockedFolder();
}

std::optional<Obstacle> act(RemovalAction action, const HeldFile &kept, HeldFile &candidate)
{
    if (auto obstacle = kept.change()) {
        obstacle->reason = u"the kept file %1: %2"_s.arg(kept.path(), obstacle->reason);
        return obstacle;
    }
    if (const auto obstacle = candidate.change())
        return obstacle;
    switch (action) {
    case RemovalAction::Delete:
        return deleteFile(candidate);
    case RemovalAction::HardLink:
        return replaceByHardLink(kept, candidate);
    case RemovalAction::Reflink:
        return shareBlocks(kept, candidate);
    case RemovalAction::Trash:
        break;
    }
    return moveToTrash(candidate);
}
