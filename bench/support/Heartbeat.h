#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QString>
#include <QTimer>

#include <functional>

/// A 5 ms timer on the GUI thread: what lies between two of its beats is how long a user waits for an answer.
///
/// The steps of a phase run with the real event loop, never with a local one that processes events by itself.
class Heartbeat
{
public:
    /// Time between two beats.
    struct Gap
    {
        double milliseconds = 0;
        /// How long of it the GUI thread was at work; the rest it waited, for a core or for the disk.
        double busy = 0;
        /// Seconds after the start of its phase.
        double at = 0;
        QString phase;
    };

    struct Phase
    {
        QString name;
        double seconds = 0;
        Gap longestGap;
    };

    Heartbeat();

    /// Runs \a start, then the event loop until \a isOver is true, as one phase. False when that took longer
    /// than ten minutes.
    bool run(const QString &phase, const std::function<void()> &start, const std::function<bool()> &isOver);
    /// Runs \a start, then the event loop for so long that whatever it has queued is done.
    bool run(const QString &phase, const std::function<void()> &start);

    /// The phases and the longest gaps as a table.
    [[nodiscard]] QString table() const;

private:
    void beat();
    void startGap();
    void waitUntil(const std::function<bool()> &isOver);

    QTimer m_timer;
    QElapsedTimer m_sinceBeat;
    double m_busyAtBeat = 0;
    QElapsedTimer m_sincePhase;
    QList<Phase> m_phases;
    /// The longest gap first.
    QList<Gap> m_longest;
};
