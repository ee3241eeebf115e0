#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QString>
#include <QTimer>

#include <functional>

/// A 5 ms timer on the GUI thread. The gap between two of its beats is how long the window takes to respond.
///
/// Phases run in the normal event loop, never in nested calls of processEvents().
class Heartbeat
{
public:
    /// Time between two beats.
    struct Gap
    {
        double milliseconds = 0;
        /// CPU time of the GUI thread during the gap, in milliseconds; the rest it waited for a core or the
        /// disk.
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

    /// Runs \a start, then the event loop until \a isOver is true, as one phase. False on a timeout of ten
    /// minutes.
    bool run(const QString &phase, const std::function<void()> &start, const std::function<bool()> &isOver);
    /// Runs \a start, then the event loop for 100 ms, to process what it has queued.
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
