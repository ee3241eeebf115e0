#include "bench/support/Benchmarks.h"
#include "bench/support/ScannedWindow.h"

#include <QCoreApplication>
#include <QFileInfo>

// Select All and Unselect in the real window, and the lower bound of Select All: reading the creation time of
// each file. The size is the number of files: pairs of copies, or copies of one file.

namespace {

void press(benchmark::State &state, ScannedWindow &window, const char *button)
{
    WindowDriver &driver = window.withFiles(sizeOf(state));
    while (state.KeepRunning()) {
        driver.click(button);
        QCoreApplication::processEvents();
    }
}

void readCreationTimes(benchmark::State &state, FileTree &tree)
{
    const QStringList paths = tree.paths(sizeOf(state));
    while (state.KeepRunning()) {
        for (const QString &path : paths)
            benchmark::DoNotOptimize(QFileInfo(path).fileTime(QFileDevice::FileBirthTime));
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const WindowApplication application(argc, argv);
    FileTree pairs(writePair);
    FileTree copies(writeCopy);
    ScannedWindow windowOfPairs(pairs);
    ScannedWindow windowOfCopies(copies);
    const auto sizes = {1000, 20'000, 100'000, 200'000};
    addGrowing("readCreationTimes", sizes, [&](benchmark::State &state) { readCreationTimes(state, pairs); });
    addGrowing(
        "selectAll", sizes, [&](benchmark::State &state) { press(state, windowOfPairs, "btnSelectAll"); });
    addGrowing("selectAllOfLargeGroup", {1000, 5000, 20'000, 50'000},
        [&](benchmark::State &state) { press(state, windowOfCopies, "btnSelectAll"); });
    addGrowing(
        "unselect", sizes, [&](benchmark::State &state) { press(state, windowOfPairs, "btnUnselect"); });
    return runBenchmarks(argc, argv);
}
