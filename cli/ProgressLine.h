#pragma once

#include <QString>

/// How far a search is.
struct ProgressState
{
    /// Found so far.
    qint64 files = 0;
    /// While folders are still read, nothing is known of bytes.
    bool comparing = false;
    qint64 doneBytes = 0;
    qint64 totalBytes = 0;
    /// 0 as long as it is not known.
    double bytesPerSecond = 0;
};

/// The rate of the last seconds: large files come first, and small ones take longer for each byte.
class RateEstimate
{
public:
    /// Takes note that \a bytes in all were done \a milliseconds after the start.
    void add(qint64 bytes, qint64 milliseconds);

    /// 0 in the first second, which says little.
    [[nodiscard]] double bytesPerSecond() const;

private:
    qint64 m_bytes = 0;
    qint64 m_milliseconds = 0;
    /// Smoothed; what it was before the start counts as 0.
    double m_rate = 0;
};

/// One line of at most \a width columns that shows \a state: a bar, per cent, bytes, files and time left.
/// What does not fit is left out, the bar first.
[[nodiscard]] QString progressLine(const ProgressState &state, int width);
