#include "analysis/DuplicateAnalysis.h"
#include "bench/support/Benchmarks.h"
#include "bench/support/FileTree.h"

#include <QFile>

// The analysis, from paths to groups, of files whose sizes and contents are distributed in different ways.
// In all cases the time must grow linearly with the number of files.

namespace {

void analyse(benchmark::State &state, FileTree &tree)
{
    const QStringList paths = tree.paths(sizeOf(state));
    const AnalysisCallbacks callbacks{
        .progress = [](int) {},
        .duplicatesFound = [](qsizetype) {},
        .abandoned = [] { return false; },
    };
    qsizetype groups = 0;
    while (state.KeepRunning())
        groups = findDuplicates(paths, callbacks).size();
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["groups"] = static_cast<double>(groups);
}

/// As many sizes as possible. Counting all duplicates again after each size would be quadratic.
void writePairOfOwnSize(const QString &path, int number)
{
    writeWithHole(path, QByteArray::number(number / 2), 10 + number / 2);
}

/// No file is opened.
void writeUniqueSize(const QString &path, int number)
{
    writeWithHole(path, {}, number);
}

/// All files are opened, but none has a copy.
void writeUniqueContent(const QString &path, int number)
{
    writeQuickly(path, QByteArray::number(number).rightJustified(16, '0'));
}

} // namespace

int main(int argc, char *argv[])
{
    FileTree ownSizes(writePairOfOwnSize);
    FileTree pairs(writePair);
    FileTree uniqueSizes(writeUniqueSize);
    FileTree uniqueContents(writeUniqueContent);
    FileTree copies(writeCopy);
    const auto add = [](const char *name, FileTree &tree) {
        addGrowing(name, {1000, 50'000, 100'000, 200'000, 400'000},
            [&tree](benchmark::State &state) { analyse(state, tree); });
    };
    add("pairsOfOneSize", pairs);
    add("pairsOfOwnSizes", ownSizes);
    add("uniqueSizes", uniqueSizes);
    add("uniqueContents", uniqueContents);
    add("oneGroup", copies);
    return runBenchmarks(argc, argv);
}
