#include "results/GroupDeletion.h"

#include <QFile>

#include <algorithm>

namespace {

DeletionResult deleteFiles(const QSet<QString> &paths)
{
    DeletionResult result;
    for (const QString &path : paths)
        ++(QFile::remove(path) ? result.deleted : result.failed);
    return result;
}

void dropMarkedFiles(DuplicateGroup &group)
{
    group.files.removeIf([&group](const QString &path) { return group.markedFiles.contains(path); });
    setMarkedFiles(group, {});
}

} // namespace

bool hasMarkedFiles(const QList<DuplicateGroup> &groups)
{
    return std::ranges::any_of(
        groups, [](const DuplicateGroup &group) { return !group.markedFiles.isEmpty(); });
}

DeletionResult deleteMarkedFiles(QList<DuplicateGroup> &groups)
{
    DeletionResult total;
    for (auto group = groups.rbegin(); group != groups.rend(); ++group) {
        if (group->markedFiles.isEmpty())
            continue;
        const DeletionResult result = deleteFiles(group->markedFiles);
        total.deleted += result.deleted;
        total.failed += result.failed;
        dropMarkedFiles(*group);
    }
    // One pass at the end: removing groups one by one would move the rest of the list each time.
    groups.removeIf([](const DuplicateGroup &group) { return group.files.size() < 2; });
    return total;
}
