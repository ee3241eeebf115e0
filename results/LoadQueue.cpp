#include "results/LoadQueue.h"

#include <QScopedValueRollback>

LoadQueue::LoadQueue()
{
    m_delay.setSingleShot(true);
    m_delay.setTimerType(Qt::PreciseTimer);
    m_delay.callOnTimeout([this] {
        runBetweenLoads([this, number = m_delayedSteps, step = m_delayed] {
            if (number == m_delayedSteps)
                step();
        });
    });
}

bool LoadQueue::isLoading() const
{
    return m_loading;
}

void LoadQueue::runBetweenLoads(const Step &step)
{
    if (m_loading)
        m_postponed.append(step);
    else
        step();
}

void LoadQueue::runLoad(const Step &load)
{
    runBetweenLoads([this, load] {
        {
            const QScopedValueRollback loading(m_loading, true);
            load();
        }
        runPostponedSteps();
    });
}

void LoadQueue::runDelayed(std::chrono::milliseconds delay, const Step &step)
{
    ++m_delayedSteps;
    m_delayed = step;
    m_delay.start(delay);
}

void LoadQueue::runPostponedSteps()
{
    while (!m_postponed.isEmpty())
        m_postponed.takeFirst()();
}
