#include "bench/support/Benchmarks.h"
#include "bench/support/ScannedWindow.h"

#include <QCoreApplication>

// The results tree of the real window. The size is the number of files: pairs of copies, or copies of one
// file.

namespace {

/// Loads the first batch. With pairs of copies, the passes over the groups grow; with copies of one file, its
/// rows.
void loadCategory(benchmark::State &state, ScannedWindow &window)
{
    WindowDriver &driver = window.withFiles(sizeOf(state));
    while (state.KeepRunning()) {
        driver.click("btnAll");
        QCoreApplication::processEvents();
    }
}

/// Loads all batches, from the first to the last.
void scrollThroughAll(benchmark::State &state, ScannedWindow &window)
{
    WindowDriver &driver = window.withFiles(sizeOf(state));
    while (state.KeepRunning()) {
        driver.scrollToTheEnd();
        state.PauseTiming();
        driver.click("btnAll");
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
}

/// Saves the check boxes of all rows and removes the rows.
void reloadAfterScrolling(benchmark::State &state, ScannedWindow &window)
{
    WindowDriver &driver = window.withFiles(sizeOf(state));
    while (state.KeepRunning()) {
        state.PauseTiming();
        driver.scrollToTheEnd();
        state.ResumeTiming();
        driver.click("btnAll");
        QCoreApplication::processEvents();
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
    addGrowing("loadCategory", {1000, 20'000, 100'000, 200'000},
        [&](benchmark::State &state) { loadCategory(state, windowOfPairs); });
    addGrowing("openLargeGroup", {1000, 5000, 20'000, 50'000},
        [&](benchmark::State &state) { loadCategory(state, windowOfCopies); });
    addGrowing("scrollThroughAll", {1000, 5000, 20'000, 40'000},
        [&](benchmark::State &state) { scrollThroughAll(state, windowOfPairs); });
    addGrowing("reloadAfterScrolling", {1000, 5000, 20'000, 40'000},
        [&](benchmark::State &state) { reloadAfterScrolling(state, windowOfPairs); });
    return runBenchmarks(argc, argv);
}
