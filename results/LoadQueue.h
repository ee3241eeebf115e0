#pragma once

#include <QList>
#include <QTimer>

#include <chrono>
#include <functional>

/// Runs changes of the results page one after another.
///
/// A category load processes pending events when it closes the loading panel. Without the queue, a delivery,
/// a second load or a deletion could run inside the load, replace the groups that it uses, or save its marks
/// into the wrong groups. GUI thread only.
class LoadQueue
{
public:
    using Step = std::function<void()>;

    LoadQueue();

    /// Returns true while a load runs, but not while its postponed steps run.
    [[nodiscard]] bool isLoading() const;

    /// Runs \a step immediately, or after the current load and the steps postponed before.
    void runBetweenLoads(const Step &step);

    /// Runs \a load, then the steps postponed during it. During another load, postpones \a load like a step.
    void runLoad(const Step &load);

    /// Runs \a step like runBetweenLoads() after \a delay. Replaces an earlier delayed step that has not run
    /// yet, even if that step is already postponed.
    void runDelayed(std::chrono::milliseconds delay, const Step &step);

private:
    void runPostponedSteps();

    bool m_loading = false;
    QList<Step> m_postponed;
    QTimer m_delay;
    Step m_delayed;
    /// Number of delayed steps so far. Identifies the newest one.
    int m_delayedSteps = 0;
};
