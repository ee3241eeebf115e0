#include "bench/Measurement.h"

#include <sys/resource.h>

qint64 peakMemoryKibibytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}
