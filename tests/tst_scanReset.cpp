#include "scan/FileCollection.h"
#include "tests/support/CopiesToScan.h"
#include "tests/support/DuplicateFiles.h"
#include "tests/support/LoadingPanelEvents.h"
#include "tests/support/PoolGate.h"
#include "tests/support/WindowDriver.h"

#include <QElapsedTimer>
#include <QTest>

#ifdef __GLIBC__
#include <malloc.h>
#endif

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int timerInterval = 500;
constexpr int panelTimerInterval = 400;
constexpr int timeout = 30'000;

/// The elapsed time on the scan page in seconds.
qint64 secondsShown(WindowDriver &driver)
{
    return QTime(0, 0).secsTo(QTime::fromString(driver.labelText("labelElapsedTimeValue"), u"hh:mm:ss"_s));
}

} // namespace

/// No state of one scan reaches the next one.
class tst_scanReset : public QObject, private CopiesToScan
{
    Q_OBJECT

private slots:
    void init();
    void countsFilesFromZero();
    void restartsTheClock();
    void endsTheStatusAnimationOfThePreviousScan();
    void clearsTheMarks();
    void stopsUpdatesOfTheClosedLoadingPanel();
};

void tst_scanReset::init()
{
    reset();
}

void tst_scanReset::countsFilesFromZero()
{
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    const PoolGate gate;
    scannedFileCount = 1234;
    acceptedFileCount = 1233;

    driver.click("btnStartScan");
    QCOMPARE(scannedFileCount.load(), 0);
    QCOMPARE(acceptedFileCount.load(), 0);
    fire(driver.timers(timerInterval));
    QCOMPARE(driver.labelText("labelFilesScannedValue"), u"0"_s);
}

void tst_scanReset::restartsTheClock()
{
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    const PoolGate gate;
    driver.click("btnStartScan");
    QTRY_VERIFY_WITH_TIMEOUT(secondsShown(driver) >= 1, timeout);
    driver.click("btnStopScan");

    // Starts before the program's clock and is read after it.
    QElapsedTimer sinceStart;
    sinceStart.start();
    driver.click("btnStartScan");
    fire(driver.timers(timerInterval));
    QVERIFY(secondsShown(driver) <= sinceStart.elapsed() / 1000);
}

/// Stop leaves the animation running until the analysis begins.
void tst_scanReset::endsTheStatusAnimationOfThePreviousScan()
{
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    PoolGate gate;
    driver.click("btnStartScan");
    QTRY_COMPARE_WITH_TIMEOUT(driver.timers(timerInterval).size(), 2, timeout);
    driver.click("btnStopScan");
    driver.click("btnStartScan");
    // The animation starts in a queued call.
    QCoreApplication::sendPostedEvents(&driver.window(), QEvent::MetaCall);
    QCOMPARE(driver.timers(timerInterval).size(), 2);

    gate.runQueuedTasks();
    QTRY_COMPARE_WITH_TIMEOUT(driver.labelText("labelCurrentFile"), u"Analyzing..."_s, timeout);
    QCOMPARE(driver.timers(timerInterval).size(), 1);
    fire(driver.timers(timerInterval));
    QCOMPARE(driver.labelText("labelScanStatus"), u"Analyzing duplicates, please wait..."_s);
}

void tst_scanReset::clearsTheMarks()
{
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    QVERIFY(driver.scan());

    driver.click("btnBack");
    const PoolGate gate;
    driver.click("btnStartScan");
    driver.find("btnRemoveSelected")->setEnabled(true);

    QCOMPARE(driver.clickAndCloseBoxes("btnRemoveSelected"),
        (QList<ShownBox>{{u"NOTE"_s, u"Please select the files you want to delete!"_s}}));
    QCOMPARE(filesBelow(m_folder->path()).size(), 3);
}

/// A scan that starts before the first rows appear deletes the panel but not its timer.
void tst_scanReset::stopsUpdatesOfTheClosedLoadingPanel()
{
#ifdef __GLIBC__
    // Overwrites freed memory, so that its use shows without a sanitizer.
    ::mallopt(M_PERTURB, 0xA5);
#endif
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    LoadingPanelEvents events(&driver.window());
    qsizetype timersAfterStart = -1;
    events.onShown = [&](QWidget *) {
        QMetaObject::invokeMethod(
            &driver.window(),
            [&] {
                driver.click("btnBack");
                driver.click("btnStartScan");
                timersAfterStart = driver.timers(panelTimerInterval).size();
                fire(driver.timers(panelTimerInterval));
            },
            Qt::QueuedConnection);
    };

    driver.click("btnStartScan");
    QTRY_COMPARE_WITH_TIMEOUT(timersAfterStart, 1, timeout);
    events.onShown = nullptr;
    QVERIFY(driver.waitForResults());
}

QTEST_MAIN(tst_scanReset)
#include "tst_scanReset.moc"
