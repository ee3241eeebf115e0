#pragma once

#include <QtGlobal>

#include <chrono>

/// Time from its construction, or from the last lap, in seconds.
class Stopwatch
{
public:
    /// Seconds since the last call, or since construction.
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

/// The most memory that the process has occupied so far.
qint64 peakMemoryKibibytes();
