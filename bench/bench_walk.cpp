#include "bench/support/Benchmarks.h"
#include "bench/support/FileTree.h"
#include "bench/support/ScanEverything.h"
#include "scan/FileCollection.h"

#include <ctime>

// Both passes over a tree in memory, without rules and with the desktop and hidden-file rules.

namespace {

ScanOptions withoutDesktop()
{
    ScanOptions options = scanEverything();
    options.skipDesktop = true;
    return options;
}

ScanOptions withoutHidden()
{
    ScanOptions options = scanEverything();
    options.skipHiddenFolders = true;
    return options;
}

void collect(const QStringList &folders, const ScanOptions &options)
{
    const CollectionCallbacks callbacks{
        .counted = [] {},
        .progress = [](const QString &, int) {},
        .abandoned = [] { return false; },
    };
    benchmark::DoNotOptimize(collectFiles(folders, options, callbacks));
}

void walk(benchmark::State &state, FileTree &tree, const ScanOptions &options)
{
    const QStringList folders = tree.folders(sizeOf(state));
    while (state.KeepRunning())
        collect(folders, options);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// Runs both in turn and compares CPU times, which other work on the machine hardly affects.
void compareRules(benchmark::State &state, FileTree &tree)
{
    const QStringList folders = tree.folders(sizeOf(state));
    double plain = 0;
    double ruled = 0;
    while (state.KeepRunning()) {
        const std::clock_t start = std::clock();
        collect(folders, scanEverything());
        const std::clock_t between = std::clock();
        collect(folders, withoutDesktop());
        plain += static_cast<double>(between - start);
        ruled += static_cast<double>(std::clock() - between);
    }
    state.counters["with/without"] = ruled / plain;
}

} // namespace

int main(int argc, char *argv[])
{
    FileTree tree(writePair);
    const auto sizes = {1000, 10'000, 50'000, 100'000, 200'000, 400'000};
    addGrowing("walk", sizes, [&](benchmark::State &state) { walk(state, tree, scanEverything()); });
    addGrowing(
        "walkWithoutDesktop", sizes, [&](benchmark::State &state) { walk(state, tree, withoutDesktop()); });
    addGrowing(
        "walkWithoutHidden", sizes, [&](benchmark::State &state) { walk(state, tree, withoutHidden()); });
    addGrowing(
        "desktopRuleRatio", {1000, 100'000}, [&](benchmark::State &state) { compareRules(state, tree); });
    return runBenchmarks(argc, argv);
}
