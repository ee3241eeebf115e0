#include "bench/support/Benchmarks.h"

int sizeOf(benchmark::State &state)
{
    state.SetComplexityN(state.range(0));
    return static_cast<int>(state.range(0));
}

int runBenchmarks(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    const std::size_t run = benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return run > 0 ? 0 : 1;
}
