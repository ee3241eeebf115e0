#pragma once

#include "cli/ProgressLine.h"

#include <QElapsedTimer>
#include <QString>

#include <condition_variable>
#include <mutex>
#include <thread>

/// Shows the progress of a search in one line on standard error. A separate thread redraws the line five
/// times a second.
class ProgressDisplay
{
public:
    /// Without \a shown, all functions do nothing.
    explicit ProgressDisplay(bool shown);
    /// Calls finish().
    ~ProgressDisplay();
    Q_DISABLE_COPY_MOVE(ProgressDisplay)

    /// Sets the number of files found so far. Callable from any thread.
    void showFiles(qint64 files);
    /// Sets the bytes compared so far and in total. Callable from any thread.
    void showBytes(qint64 done, qint64 total);

    /// Draws the last state. Then clears the line on a terminal, and ends it elsewhere.
    void finish();

private:
    void run();
    /// The mutex must be locked, or the thread must have ended.
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
