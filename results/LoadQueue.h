#pragma once

#include <QList>
#include <QTimer>

#include <chrono>
#include <functional>

/// Runs the changes of the results page one after the other.
///
/// A category load processes pending events when it closes the loading panel. A delivery, a second load or a
/// deletion that ran there would change the groups under the first load, or save its marks into the wrong
/// groups. All calls belong to the thread that made the queue.
class LoadQueue
{
public:
    using Step = std::function<void()>;

    LoadQueue();

    /// True while a load runs; false again for the steps that it has postponed.
    [[nodiscard]] bool isLoading() const;

    /// Runs \a step at once. During a load, postpones it to the end of the load, after the steps postponed
    /// before.
    void runBetweenLoads(const Step &step);

    /// Runs \a load, then the steps postponed meanwhile. During a load, postpones \a load like any step.
    void runLoad(const Step &load);

    /// Runs \a step between loads, not before \a delay is over. Replaces an earlier delayed step that has not
    /// run yet, even when that step is already postponed.
    void runDelayed(std::chrono::milliseconds delay, const Step &step);

private:
    void runPostponedSteps();

    bool m_loading = false;
    QList<Step> m_postponed;
    QTimer m_delay;
    Step m_delayed;
    /// Delayed steps so far: tells the newest of them from those that it has replaced.
    int m_delayedSteps = 0;
};
