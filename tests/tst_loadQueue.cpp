#include "results/LoadQueue.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTest>

using std::chrono_literals::operator""h;
using std::chrono_literals::operator""ms;

/// The order in which a queue runs loads and the other steps that change the results page.
class tst_loadQueue : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void runsAStepImmediatelyWithoutALoad();
    void postponesStepsToTheEndOfTheLoad();
    void runsOneLoadAfterTheOther();
    void runsStepsOfAPostponedLoadAfterThoseBeforeIt();
    void runsADelayedStepWhenItIsDue();
    void runsOnlyTheNewestOfTheDelayedSteps();
    void runsADelayedStepAfterTheLoad();
    void replacesADelayedStepThatIsPostponed();
    void allowsADelayedStepToDelayAnother();

private:
    /// A step that logs its name, followed by a plus during a load.
    LoadQueue::Step step(const QString &name)
    {
        return [this, name] { m_log.append(m_queue->isLoading() ? name + u'+' : name); };
    }

    std::unique_ptr<LoadQueue> m_queue;
    QStringList m_log;
};

void tst_loadQueue::init()
{
    m_queue = std::make_unique<LoadQueue>();
    m_log.clear();
}

void tst_loadQueue::runsAStepImmediatelyWithoutALoad()
{
    QVERIFY(!m_queue->isLoading());
    m_queue->runBetweenLoads(step(QStringLiteral("step")));
    QCOMPARE(m_log, QStringList{QStringLiteral("step")});
}

void tst_loadQueue::postponesStepsToTheEndOfTheLoad()
{
    m_queue->runLoad([this] {
        for (const char *name : {"first", "second", "third"})
            m_queue->runBetweenLoads(step(QLatin1StringView(name)));
        step(QStringLiteral("load"))();
    });
    QCOMPARE(m_log.join(u' '), QStringLiteral("load+ first second third"));
    QVERIFY(!m_queue->isLoading());
}

void tst_loadQueue::runsOneLoadAfterTheOther()
{
    m_queue->runLoad([this] {
        m_queue->runLoad(step(QStringLiteral("inner")));
        step(QStringLiteral("outer"))();
    });
    QCOMPARE(m_log.join(u' '), QStringLiteral("outer+ inner+"));
}

void tst_loadQueue::runsStepsOfAPostponedLoadAfterThoseBeforeIt()
{
    m_queue->runLoad([this] {
        m_queue->runLoad([this] {
            m_queue->runBetweenLoads(step(QStringLiteral("last")));
            step(QStringLiteral("inner"))();
        });
        m_queue->runBetweenLoads(step(QStringLiteral("step")));
        step(QStringLiteral("outer"))();
    });
    QCOMPARE(m_log.join(u' '), QStringLiteral("outer+ inner+ step last"));
}

void tst_loadQueue::runsADelayedStepWhenItIsDue()
{
    m_queue->runDelayed(0ms, step(QStringLiteral("step")));
    QCOMPARE(m_log, QStringList());
    QTRY_COMPARE(m_log, QStringList{QStringLiteral("step")});
    QCoreApplication::processEvents();
    QCOMPARE(m_log.size(), 1);
}

void tst_loadQueue::runsOnlyTheNewestOfTheDelayedSteps()
{
    m_queue->runDelayed(0ms, step(QStringLiteral("replaced")));
    m_queue->runDelayed(1h, step(QStringLiteral("far away")));
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    QCOMPARE(m_log, QStringList());
    m_queue->runDelayed(0ms, step(QStringLiteral("newest")));
    QTRY_COMPARE(m_log, QStringList{QStringLiteral("newest")});
}

void tst_loadQueue::runsADelayedStepAfterTheLoad()
{
    m_queue->runLoad([this] {
        m_queue->runDelayed(0ms, step(QStringLiteral("delayed")));
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
        m_queue->runBetweenLoads(step(QStringLiteral("step")));
        step(QStringLiteral("load"))();
    });
    QCOMPARE(m_log.join(u' '), QStringLiteral("load+ delayed step"));
}

void tst_loadQueue::replacesADelayedStepThatIsPostponed()
{
    m_queue->runLoad([this] {
        m_queue->runBetweenLoads([this] { m_queue->runDelayed(0ms, step(QStringLiteral("newest"))); });
        m_queue->runDelayed(0ms, step(QStringLiteral("replaced")));
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
        step(QStringLiteral("load"))();
    });
    QTRY_COMPARE(m_log.join(u' '), QStringLiteral("load+ newest"));
}

void tst_loadQueue::allowsADelayedStepToDelayAnother()
{
    // The step uses its capture after it has delayed the next one, so it must still exist then.
    const QString longName(100, u'x');
    m_queue->runDelayed(0ms, [this, longName] {
        m_queue->runDelayed(0ms, step(QStringLiteral("next")));
        step(longName)();
    });
    QTRY_COMPARE(m_log, (QStringList{longName, QStringLiteral("next")}));
}

QTEST_GUILESS_MAIN(tst_loadQueue)
#include "tst_loadQueue.moc"
