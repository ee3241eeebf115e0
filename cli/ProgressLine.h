#pragma once

#include <QString>

/// Progress of a search.
struct ProgressState
{
    /// Files found so far.
    qint64 files = 0;
    /// Whether files are being compared. Before that, the numbers of bytes are unknown.
    bool comparing = false;
    qint64 doneBytes = 0;
    qint64 totalBytes = 0;
    /// 0 while unknown.
    double bytesPerSecond = 0;
};

/// Estimates the current rate. The average since the start would be wrong: large files come first, and small
/// ones take longer per byte.
class RateEstimate
{
public:
    /// Adds a measurement: \a bytes in total, \a milliseconds after the start.
    void add(qint64 bytes, qint64 milliseconds);

    /// 0 in the first second, when there is too little to estimate from.
    [[nodiscard]] double bytesPerSecond() const;

private:
    qint64 m_bytes = 0;
    qint64 m_milliseconds = 0;
    /// Exponential moving average that starts at 0.
    double m_rate = 0;
};

/// One line of at most \a width columns that shows \a state: a bar, per cent, bytes, files and time left.
/// Leaves out the parts that do not fit, the bar first.
[[nodiscard]] QString progressLine(const ProgressState &state, int width);
