#include "results/LoadQueue.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTest>

using Qt::StringLiterals::operator""_s;

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
    void runsNestedLoadsOneAfterTheOther();
    void runsStepsOfAPostponedLoadAfterThoseBeforeIt();
    void runsADelayedStepWhenItIsDue();
    void runsOnlyTheNewestDelayedStep();
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
    m_queue->runBetweenLoads(step(u"step"_s));
    QCOMPARE(m_log, QStringList{u"step"_s});
}

void tst_loadQueue::postponesStepsToTheEndOfTheLoad()
{
    m_queue->runLoad([this] {
        for (const char *name : {"first", "second", "third"})
            m_queue->runBetweenLoads(step(QLatin1StringView(name)));
        step(u"load"_s)();
    });
    QCOMPARE(m_log.join(u' '), u"load+ first second third"_s);
    QVERIFY(!m_queue->isLoading());
}

void tst_loadQueue::runsNestedLoadsOneAfterTheOther()
{
    m_queue->runLoad([this] {
        m_queue->runLoad(step(u"inner"_s));
        step(u"outer"_s)();
    });
    QCOMPARE(m_log.join(u' '), u"outer+ inner+"_s);
}

void tst_loadQueue::runsStepsOfAPostponedLoadAfterThoseBeforeIt()
{
    m_queue->runLoad([this] {
        m_queue->runLoad([this] {
            m_queue->runBetweenLoads(step(u"last"_s));
            step(u"inner"_s)();
        });
        m_queue->runBetweenLoads(step(u"step"_s));
        step(u"outer"_s)();
    });
    QCOMPARE(m_log.join(u' '), u"outer+ inner+ step last"_s);
}

void tst_loadQueue::runsADelayedStepWhenItIsDue()
{
    m_queue->runDelayed(0ms, step(u"step"_s));
    QCOMPARE(m_log, QStringList());
    QTRY_COMPARE(m_log, QStringList{u"step"_s});
    QCoreApplication::processEvents();
    QCOMPARE(m_log.size(), 1);
}

void tst_loadQueue::runsOnlyTheNewestDelayedStep()
{
    m_queue->runDelayed(0ms, step(u"replaced"_s));
    m_queue->runDelayed(1h, step(u"distant"_s));
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    QCOMPARE(m_log, QStringList());
    m_queue->runDelayed(0ms, step(u"newest"_s));
    QTRY_COMPARE(m_log, QStringList{u"newest"_s});
}

void tst_loadQueue::runsADelayedStepAfterTheLoad()
{
    m_queue->runLoad([this] {
        m_queue->runDelayed(0ms, step(u"delayed"_s));
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
        m_queue->runBetweenLoads(step(u"step"_s));
        step(u"load"_s)();
    });
    QCOMPARE(m_log.join(u' '), u"load+ delayed step"_s);
}

void tst_loadQueue::replacesADelayedStepThatIsPostponed()
{
    m_queue->runLoad([this] {
        m_queue->runBetweenLoads([this] { m_queue->runDelayed(0ms, step(u"newest"_s)); });
        m_queue->runDelayed(0ms, step(u"replaced"_s));
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
        step(u"load"_s)();
    });
    QTRY_COMPARE(m_log.join(u' '), u"load+ newest"_s);
}

void tst_loadQueue::allowsADelayedStepToDelayAnother()
{
    // The step uses its capture after it has delayed the next one, so it must still exist then.
    const QString longName(100, u'x');
    m_queue->runDelayed(0ms, [this, longName] {
        m_queue->runDelayed(0ms, step(u"next"_s));
        step(longName)();
    });
    QTRY_COMPARE(m_log, (QStringList{longName, u"next"_s}));
}

QTEST_GUILESS_MAIN(tst_loadQueue)
#include "tst_loadQueue.moc"
