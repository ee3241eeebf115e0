#pragma once

#include <benchmark/benchmark.h>

#include <initializer_list>

/// Adds a benchmark that runs at each of \a sizes and at the end says how its time grows with them. It
/// measures the time on the clock, because work on other threads counts as well.
template <typename Function>
benchmark::internal::Benchmark *addGrowing(
    const char *name, std::initializer_list<int> sizes, Function function)
{
    auto *const added = benchmark::RegisterBenchmark(name, function);
    for (const int size : sizes)
        added->Arg(size);
    return added->UseRealTime()->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond)->Complexity();
}

/// The size of this run; also tells the framework so.
int sizeOf(benchmark::State &state);

/// Runs the benchmarks that were added and that the command line names; returns the program's exit code.
int runBenchmarks(int argc, char **argv);
