#pragma once

#include <QtGlobal>

#include <chrono>

/// Measures laps: the time since construction or since the last lap.
class Stopwatch
{
public:
    /// Ends a lap and returns its seconds.
    double lap()
    {
        const auto now = std::chrono::steady_clock::now();
        const std::chrono::duration<double> seconds = now - m_start;
        m_start = now;
        return seconds.count();
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

/// Peak resident memory of the process so far, in KiB.
qint64 peakMemoryKibibytes();
