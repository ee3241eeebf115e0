#include "analysis/DuplicateGroup.h"

#include "analysis/CreationTime.h"

qsizetype indexOfKeptCopy(const QStringList &files)
{
    qsizetype kept = 0;
    std::optional<qint64> oldest = creationTime(files.first());
    for (qsizetype i = 1; i < files.size(); ++i) {
        const std::optional<qint64> created = creationTime(files.at(i));
        // A file that is gone has no time. std::nullopt would compare as the earliest.
        if (created && (!oldest || *created < *oldest)) {
            oldest = created;
            kept = i;
        }
    }
    return kept;
}

void markAllButKeptCopy(DuplicateGroup &group)
{
    QSet<QString> marked;
    if (group.files.size() >= 2) {
        marked = QSet<QString>(group.files.cbegin(), group.files.cend());
        marked.remove(group.files.at(indexOfKeptCopy(group.files)));
    }
    setMarkedFiles(group, marked);
}

void setMarkedFiles(DuplicateGroup &group, const QSet<QString> &marked)
{
    group.markedFiles = marked;
    group.hasMarkedFiles = !marked.isEmpty();
}
