#include "app/BackgroundTasks.h"
#include "scan/ScanThreads.h"
#include "tests/support/PoolThreads.h"

#include <QSemaphore>
#include <QTest>
#include <QThread>
#include <QThreadPool>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

namespace {

constexpr int patience = 30'000;

/// Makes a task last longer than the call that must wait for it.
void sleepBriefly()
{
    QThread::msleep(30);
}

} // namespace

/// Tasks never outlive their owner.
class tst_backgroundTasks : public QObject
{
    Q_OBJECT

private slots:
    void runsATaskOnAScanThread();
    void finishWaitsForTheRunningTask();
    void destructorWaitsForTheRunningTasks();
    void finishGivesUpAtTheDeadline();
    void finishAbandonsTheTasks();
    void skipsATaskThatNeverStarted_data();
    void skipsATaskThatNeverStarted();
    void finishesWithoutAnyTask();
    void predicateOutlivesTheOwner();
    void ownersAreIndependent();
    void finishesWhileTasksEnd();
};

void tst_backgroundTasks::runsATaskOnAScanThread()
{
    BackgroundTasks tasks;
    QSemaphore ran;
    std::atomic<bool> onScanThread{false};
    std::atomic<bool> onPool{false};
    tasks.start([&] {
        onScanThread = scanThreads().contains(QThread::currentThread());
        onPool = QThreadPool::globalInstance()->contains(QThread::currentThread());
        ran.release();
    });
    QVERIFY(ran.tryAcquire(1, patience));
    QVERIFY(onScanThread);
    QVERIFY(!onPool);
    QVERIFY(!tasks.abandoned()());
}

/// The task never checks whether it is abandoned.
void tst_backgroundTasks::finishWaitsForTheRunningTask()
{
    BackgroundTasks tasks;
    QSemaphore started;
    std::atomic<bool> done{false};
    tasks.start([&] {
        started.release();
        sleepBriefly();
        done = true;
    });
    QVERIFY(started.tryAcquire(1, patience));
    tasks.finish();
    QVERIFY(done);
}

void tst_backgroundTasks::destructorWaitsForTheRunningTasks()
{
    const PoolSize size(3);
    QSemaphore started;
    std::atomic<int> done{0};
    {
        BackgroundTasks tasks;
        for (int i = 0; i < 3; ++i) {
            tasks.start([&] {
                started.release();
                sleepBriefly();
                ++done;
            });
        }
        QVERIFY(started.tryAcquire(3, patience));
    }
    QCOMPARE(done.load(), 3);
}

void tst_backgroundTasks::finishGivesUpAtTheDeadline()
{
    BackgroundTasks tasks;
    QSemaphore started;
    QSemaphore mayEnd;
    tasks.start([&] {
        started.release();
        mayEnd.acquire();
    });
    QVERIFY(started.tryAcquire(1, patience));
    const bool finishedEarly = tasks.finish(QDeadlineTimer(10));
    mayEnd.release();
    QVERIFY(!finishedEarly);
    QVERIFY(tasks.abandoned()());
    QVERIFY(tasks.finish(QDeadlineTimer(patience)));
}

/// Only finish() ends the task. If the task does not see it, runOnPoolThreads() aborts the program.
void tst_backgroundTasks::finishAbandonsTheTasks()
{
    const PoolSize size(2);
    auto tasks = std::make_unique<BackgroundTasks>();
    QSemaphore started;
    std::atomic<bool> seen{false};
    tasks->start([&, abandoned = tasks->abandoned()] {
        started.release();
        while (!abandoned())
            std::this_thread::yield();
        seen = true;
    });
    QVERIFY(started.tryAcquire(1, patience));
    QVERIFY(!seen);
    runOnPoolThreads(1, [&tasks] { tasks->finish(); });
    QVERIFY(seen);
    QVERIFY(tasks->abandoned()());
}

void tst_backgroundTasks::skipsATaskThatNeverStarted_data()
{
    QTest::addColumn<int>("threads");
    for (const int threads : {1, 2})
        QTest::addRow("%d threads", threads) << threads;
}

void tst_backgroundTasks::skipsATaskThatNeverStarted()
{
    QFETCH(const int, threads);
    const PoolSize size(threads, scanThreads());
    std::atomic<int> ran{0};
    QSemaphore started;
    BackgroundTasks tasks;
    for (int i = 0; i < threads; ++i) {
        tasks.start([&, abandoned = tasks.abandoned()] {
            started.release();
            while (!abandoned())
                std::this_thread::yield();
            ++ran;
        });
    }
    QVERIFY(started.tryAcquire(threads, patience));
    for (int i = 0; i < 20; ++i)
        tasks.start([&ran] { ++ran; });
    tasks.finish();
    QCOMPARE(ran.load(), threads);

    tasks.start([&ran] { ++ran; });
    tasks.finish();
    QCOMPARE(ran.load(), threads);
}

void tst_backgroundTasks::finishesWithoutAnyTask()
{
    BackgroundTasks tasks;
    tasks.finish();
    tasks.finish();
    QVERIFY(tasks.abandoned()());
}

void tst_backgroundTasks::predicateOutlivesTheOwner()
{
    std::function<bool()> abandoned;
    {
        const BackgroundTasks tasks;
        abandoned = tasks.abandoned();
        QVERIFY(!abandoned());
    }
    QVERIFY(abandoned());
}

void tst_backgroundTasks::ownersAreIndependent()
{
    const PoolSize size(2);
    BackgroundTasks staying;
    BackgroundTasks going;
    QSemaphore mayEnd;
    std::atomic<bool> done{false};
    staying.start([&] { done = mayEnd.tryAcquire(1, patience); });
    // Would deadlock if it waited for the task of the other owner.
    runOnPoolThreads(1, [&going] { going.finish(); });
    QVERIFY(!done);
    QVERIFY(!staying.abandoned()());
    mayEnd.release();
    QTRY_VERIFY_WITH_TIMEOUT(done, patience);
}

/// The last task may end just as the wait begins.
void tst_backgroundTasks::finishesWhileTasksEnd()
{
    const PoolSize size(4);
    for (int round = 0; round < 500; ++round) {
        std::atomic<int> running{0};
        {
            BackgroundTasks tasks;
            for (int i = 0; i < 3; ++i) {
                tasks.start([&running] {
                    ++running;
                    std::this_thread::yield();
                    --running;
                });
            }
        }
        QCOMPARE(running.load(), 0);
    }
}

QTEST_GUILESS_MAIN(tst_backgroundTasks)
#include "tst_backgroundTasks.moc"
