#pragma once

#include <benchmark/benchmark.h>

#include <initializer_list>

/// Adds a benchmark that runs at each of \a sizes and then prints how its time grows. Measures elapsed time,
/// so that work on other threads counts.
template <typename Function>
benchmark::internal::Benchmark *addGrowing(
    const char *name, std::initializer_list<int> sizes, Function function)
{
    auto *const added = benchmark::RegisterBenchmark(name, function);
    for (const int size : sizes)
        added->Arg(size);
    return added->UseRealTime()->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond)->Complexity();
}

/// The size of this run; also sets it as the N of the complexity.
int sizeOf(benchmark::State &state);

/// Runs the added benchmarks that the command line selects; returns the exit code of the program.
int runBenchmarks(int argc, char **argv);
