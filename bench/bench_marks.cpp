#include "bench/support/Benchmarks.h"
#include "results/GroupMarks.h"

#include <algorithm>

// Saving the check boxes of the loaded rows as marks, which every change of the category does first.
// Comparing each row with every group, to find groups with the same files, would be quadratic.

namespace {

/// Groups of two files, every third of them a picture, the second file marked.
QList<DuplicateGroup> makeGroups(int count)
{
    QList<DuplicateGroup> groups(count);
    for (int i = 0; i < count; ++i) {
        const QString name = QStringLiteral("/home/somebody/Pictures/folder/file-%1").arg(i);
        DuplicateGroup &group = groups[i];
        group.files = {name + QStringLiteral("-0.jpg"), name + QStringLiteral("-1.jpg")};
        group.category = i % 3 == 0 ? QStringLiteral("picture") : QStringLiteral("other");
        group.markedFiles = {group.files.last()};
        group.hasMarkedFiles = true;
    }
    return groups;
}

/// The groups of one category, or all of them.
QList<DuplicateGroup *> shownOf(QList<DuplicateGroup> &groups, const QString &category)
{
    QList<DuplicateGroup *> shown;
    for (DuplicateGroup &group : groups) {
        if (category.isEmpty() || group.category == category)
            shown.append(&group);
    }
    return shown;
}

/// \a loaded rows of the shown groups are in the tree.
void save(benchmark::State &state, const QString &category, qsizetype loaded)
{
    QList<DuplicateGroup> groups = makeGroups(sizeOf(state));
    const QList<DuplicateGroup *> shown = shownOf(groups, category);
    QList<QSet<QString>> checked;
    for (const DuplicateGroup *group : shown.first(std::min(loaded, shown.size())))
        checked.append(group->markedFiles);
    while (state.KeepRunning())
        saveMarks(groups, shown, checked);
}

} // namespace

int main(int argc, char *argv[])
{
    const auto add = [](const char *name, const char *category, qsizetype loaded) {
        addGrowing(name, {1000, 10'000, 100'000, 400'000},
            [=](benchmark::State &state) { save(state, QLatin1StringView(category), loaded); });
    };
    constexpr qsizetype everyRow = std::numeric_limits<qsizetype>::max();
    add("firstBatchLoaded", "", 20);
    add("allLoaded", "", everyRow);
    add("oneCategoryLoaded", "picture", everyRow);
    return runBenchmarks(argc, argv);
}
