#pragma once

#include "cli/ProgressLine.h"

#include <QElapsedTimer>
#include <QString>

#include <condition_variable>
#include <mutex>
#include <thread>

/// Shows how far a search is in one line on standard error, redrawn a few times a second by a thread of its
/// own. The functions that take news may be called on any thread.
class ProgressDisplay
{
public:
    /// Does nothing at all unless \a shown.
    explicit ProgressDisplay(bool shown);
    /// Ends the display as finish() does.
    ~ProgressDisplay();
    Q_DISABLE_COPY_MOVE(ProgressDisplay)

    void showFiles(qint64 files);
    void showBytes(qint64 done, qint64 total);

    /// Draws the last state, and takes the line off the terminal; where there is none, ends the line.
    void finish();

private:
    void run();
    void draw();

    const bool m_shown;
    const bool m_onTerminal;
    QElapsedTimer m_sinceComparison;
    std::mutex m_mutex;
    std::condition_variable m_finishing;
    bool m_finished = false;
    ProgressState m_state;
    RateEstimate m_rate;
    qsizetype m_drawnColumns = 0;
    std::thread m_thread;
};
