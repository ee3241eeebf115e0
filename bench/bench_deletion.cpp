#include "bench/support/Benchmarks.h"
#include "results/GroupDeletion.h"

// Deletion without disk access: the files do not exist, so only one failing system call per marked file and
// the work on the list of groups remain. Removing groups from the list one by one would be quadratic.

namespace {

/// Groups of three files. Even groups have two marked files and disappear; odd ones have one.
QList<DuplicateGroup> makeGroups(int count)
{
    QList<DuplicateGroup> groups(count);
    for (int i = 0; i < count; ++i) {
        DuplicateGroup &group = groups[i];
        const QString name = QStringLiteral("/nonexistent/%1-").arg(i);
        group.files = {name + u'0', name + u'1', name + u'2'};
        group.markedFiles = {group.files.at(1)};
        if (i % 2 == 0)
            group.markedFiles.insert(group.files.at(2));
        group.hasMarkedFiles = true;
    }
    return groups;
}

void deleteFromGroups(benchmark::State &state)
{
    const QList<DuplicateGroup> original = makeGroups(sizeOf(state));
    while (state.KeepRunning()) {
        state.PauseTiming();
        QList<DuplicateGroup> groups = original;
        groups.detach();
        state.ResumeTiming();
        benchmark::DoNotOptimize(deleteMarkedFiles(groups));
        state.PauseTiming();
        groups.clear();
        state.ResumeTiming();
    }
}

} // namespace

int main(int argc, char *argv[])
{
    addGrowing("deleteFromGroups", {1000, 10'000, 100'000, 400'000}, deleteFromGroups);
    return runBenchmarks(argc, argv);
}
