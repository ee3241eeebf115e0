#include "results/GroupMarks.h"

#include <QMultiHash>

#include <algorithm>

namespace {

/// Finds groups by their files. The hash avoids comparing every group with every other.
class GroupsByFiles
{
public:
    /// Indexes the groups whose first file is the first file of a group of \a wanted.
    GroupsByFiles(QList<DuplicateGroup> &groups, const QList<DuplicateGroup *> &wanted)
    {
        QSet<QString> firstFiles;
        for (const DuplicateGroup *group : wanted)
            firstFiles.insert(group->files.value(0));
        for (DuplicateGroup &group : groups) {
            if (const QString first = group.files.value(0); firstFiles.contains(first))
                m_byFirstFile.insert(first, &group);
        }
    }

    template <typename Visit>
    void forEachWith(const QStringList &files, Visit visit) const
    {
        const auto [first, last] = m_byFirstFile.equal_range(files.value(0));
        for (auto candidate = first; candidate != last; ++candidate) {
            if ((*candidate)->files == files)
                visit(**candidate);
        }
    }

private:
    QMultiHash<QString, DuplicateGroup *> m_byFirstFile;
};

} // namespace

void saveMarks(
    QList<DuplicateGroup> &groups, const QList<DuplicateGroup *> &shown, const QList<QSet<QString>> &checked)
{
    const qsizetype loaded = std::min(shown.size(), checked.size());
    const GroupsByFiles sameFiles(groups, shown.first(loaded));
    for (qsizetype i = 0; i < loaded; ++i) {
        const QSet<QString> &marked = checked.at(i);
        sameFiles.forEachWith(
            shown.at(i)->files, [&marked](DuplicateGroup &group) { setMarkedFiles(group, marked); });
    }
    for (qsizetype i = loaded; i < shown.size(); ++i)
        shown.at(i)->markedFiles.clear();
}
