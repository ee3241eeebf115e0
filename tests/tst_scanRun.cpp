#include "tests/support/CopiesToScan.h"
#include "tests/support/DuplicateFiles.h"
#include "tests/support/PoolGate.h"
#include "tests/support/WindowDriver.h"

#include <QProgressBar>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int timerInterval = 500;

/// The texts of the scan page that a reset clears.
QStringList resetTexts(WindowDriver &driver)
{
    QStringList texts;
    for (const char *name : {"labelFilesScannedValue", "labelDuplicatesFoundValue", "labelElapsedTimeValue",
             "labelScanStatus", "labelCurrentFile"})
        texts.append(driver.labelText(name));
    return texts;
}

const QStringList idleTexts{u"0"_s, u"0"_s, u"00:00:00"_s, QString(), QString()};

} // namespace

/// One scan on the scan page: start, timers, Stop, analysis, delivery to the results page.
class tst_scanRun : public QObject, private CopiesToScan
{
    Q_OBJECT

private slots:
    void init();
    void startsWithAnEmptyScanPage();
    void scansNothingWithoutFolders();
    void disablesStopDuringTheAnalysis();
    void showsTheResultsAndKeepsTheTimersRunning();
    void stopsImmediatelyAndDeliversLater();
    void clearsThePreviousScanAtTheNextStart();
    void showsTheLastOfOverlappingScans();
    void survivesStartsAndStopsInQuickSuccession();
};

void tst_scanRun::init()
{
    reset();
}

void tst_scanRun::startsWithAnEmptyScanPage()
{
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    PoolGate gate;
    driver.find("btnStopScan")->setEnabled(false);

    driver.click("btnStartScan");
    QCOMPARE(driver.page(), u"scanpage"_s);
    QCOMPARE(resetTexts(driver), idleTexts);
    QCOMPARE(driver.find<QProgressBar>("progressBar")->value(), 0);
    QVERIFY(driver.find("btnStopScan")->isEnabled());
    QCOMPARE(driver.timers(timerInterval).size(), 1);
    // A queued call starts the animation in the next iteration of the event loop.
    QTRY_COMPARE(driver.timers(timerInterval).size(), 2);
    for (const QTimer *timer : driver.timers(timerInterval)) {
        QVERIFY(timer->isActive());
        QVERIFY(!timer->isSingleShot());
    }
    gate.open();
    QVERIFY(driver.waitForResults());
}

void tst_scanRun::scansNothingWithoutFolders()
{
    WindowDriver driver;
    driver.removeAllFolders();
    PoolGate gate;

    driver.click("btnStartScan");
    QCOMPARE(driver.page(), u"scanpage"_s);
    gate.runQueuedTasks();
    QTRY_COMPARE(driver.labelText("labelScanStatus"), u"Analyzing duplicates, please wait..."_s);
    QCOMPARE(driver.find<QProgressBar>("progressBar")->value(), 100);
    gate.open();
    QVERIFY(driver.waitForResults());
    QCOMPARE(driver.groupTitles(), QStringList(u"No duplicate files"_s));
}

void tst_scanRun::disablesStopDuringTheAnalysis()
{
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    PoolGate gate;

    driver.click("btnStartScan");
    QTRY_COMPARE(driver.timers(timerInterval).size(), 2);
    gate.runQueuedTasks();
    QTRY_COMPARE(driver.labelText("labelScanStatus"), u"Analyzing duplicates, please wait..."_s);
    QCOMPARE(driver.labelText("labelCurrentFile"), u"Analyzing..."_s);
    QCOMPARE(driver.find<QProgressBar>("progressBar")->value(), 100);
    QCOMPARE(driver.page(), u"scanpage"_s);
    QVERIFY(!driver.find("btnStopScan")->isEnabled());
    QCOMPARE(driver.timers(timerInterval).size(), 1);
    // The animation has stopped; the clock has not.
    fire(driver.timers(timerInterval));
    QCOMPARE(driver.labelText("labelScanStatus"), u"Analyzing duplicates, please wait..."_s);
    driver.click("btnStopScan");
    QCOMPARE(driver.page(), u"scanpage"_s);
}

void tst_scanRun::showsTheResultsAndKeepsTheTimersRunning()
{
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    QStringList atDelivery;
    int progress = 0;
    QObject::connect(driver.find<QStackedWidget>("stackedWidget"), &QStackedWidget::currentChanged,
        &driver.window(), [&](int page) {
            if (page != 2)
                return;
            for (const char *name : {"labelScanStatus", "labelCurrentFile", "labelDuplicatesFoundValue"})
                atDelivery.append(driver.labelText(name));
            progress = driver.find<QProgressBar>("progressBar")->value();
        });
    QVERIFY(driver.scan());
    QCOMPARE(atDelivery, (QStringList{u"Done!"_s, u"Completed"_s, u"3"_s}));
    QCOMPARE(progress, 100);
    QVERIFY(!driver.find("btnStopScan")->isEnabled());
    QCOMPARE(driver.labelText("labelCurrentFile"), u"Completed"_s);
    QTRY_COMPARE(driver.labelText("labelDuplicatesFoundValue"), u"0"_s);

    driver.click("btnBack");
    QVERIFY(!driver.find("btnStopScan")->isEnabled());
    QCOMPARE(driver.timers(timerInterval).size(), 1);
    driver.find<QLabel>("labelElapsedTimeValue")->setText(u"stale"_s);
    QTRY_VERIFY(driver.labelText("labelElapsedTimeValue") != u"stale");
}

void tst_scanRun::stopsImmediatelyAndDeliversLater()
{
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    PoolGate gate;
    driver.click("btnStartScan");
    QTRY_COMPARE(driver.timers(timerInterval).size(), 2);
    fire(driver.timers(timerInterval));
    driver.find<QProgressBar>("progressBar")->setValue(42);
    driver.click("btnStopScan");
    QCOMPARE(driver.page(), u"page"_s);
    QCOMPARE(resetTexts(driver), idleTexts);
    QCOMPARE(driver.find<QProgressBar>("progressBar")->value(), 0);
    QVERIFY(driver.find("btnStopScan")->isEnabled());
    QVERIFY(driver.find("btnStartScan")->isEnabled());
    // The clock stops; the animation runs until the analysis begins.
    QCOMPARE(driver.timers(timerInterval).size(), 1);
    fire(driver.timers(timerInterval));
    QVERIFY(driver.labelText("labelScanStatus").startsWith(u"Scanning, please wait"_s));

    gate.open();
    QVERIFY(driver.waitForResults());
    QStringList found = driver.filePaths();
    found.sort();
    QCOMPARE(found, m_paths);
    QCOMPARE(driver.timers(timerInterval).size(), 0);
}

void tst_scanRun::clearsThePreviousScanAtTheNextStart()
{
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    QVERIFY(driver.scan());

    driver.click("btnBack");
    PoolGate gate;
    driver.click("btnStartScan");

    QCOMPARE(driver.page(), u"scanpage"_s);
    QCOMPARE(resetTexts(driver), idleTexts);
    QCOMPARE(driver.tree()->topLevelItemCount(), 0);
    QVERIFY(driver.find("btnStopScan")->isEnabled());
    QCOMPARE(driver.timers(timerInterval).size(), 1);
    gate.open();
    QVERIFY(driver.waitForResults());
    QCOMPARE(driver.filePaths().size(), 3);
}

void tst_scanRun::showsTheLastOfOverlappingScans()
{
    const QTemporaryDir other;
    const QStringList paths = writeCopies(other.path(), {u"x.txt"_s, u"y.txt"_s}, "other content");
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    PoolGate gate;

    driver.click("btnStartScan");
    driver.click("btnStopScan");
    gate.runQueuedTasks();

    QTRY_COMPARE(driver.labelText("labelCurrentFile"), u"Analyzing..."_s);
    QCOMPARE(driver.page(), u"page"_s);
    driver.setFolders({other.path()});
    driver.click("btnStartScan");
    driver.click("btnStartScan");
    QCOMPARE(driver.page(), u"scanpage"_s);
    // Runs the analysis of the first scan and both walks of the second folder.
    gate.open();
    QTRY_COMPARE_WITH_TIMEOUT(([&driver] {
        QStringList shown = driver.filePaths();
        shown.sort();
        return shown;
    }()),
        paths, 30'000);
    QCOMPARE(driver.page(), u"duplicatespage"_s);
    QCOMPARE(driver.checkedPaths().size(), 1);
}

void tst_scanRun::survivesStartsAndStopsInQuickSuccession()
{
    writePairs(m_folder->path(), 60, u"txt"_s);
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    int deliveries = 0;
    QObject::connect(driver.find<QStackedWidget>("stackedWidget"), &QStackedWidget::currentChanged,
        &driver.window(), [&deliveries](int page) { deliveries += page == 2 ? 1 : 0; });
    for (int i = 0; i < 12; ++i) {
        driver.click("btnStartScan");
        QTest::qWait(i % 4);
        driver.find("btnStopScan")->setEnabled(true);
        driver.click("btnStopScan");
    }
    QCOMPARE(driver.page(), u"page"_s);

    driver.click("btnStartScan");
    QVERIFY(QTest::qWaitFor(
        [&] { return QThreadPool::globalInstance()->activeThreadCount() == 0 && driver.waitForResults(1); },
        30'000));
    QVERIFY(deliveries > 0);
    QTRY_COMPARE(driver.tree()->topLevelItemCount(), 20);
    driver.loadAllBatches();
    QCOMPARE(driver.tree()->topLevelItemCount(), 61);
    QCOMPARE(driver.filePaths().size(), 3 + 2 * 60);
}

QTEST_MAIN(tst_scanRun)
#include "tst_scanRun.moc"
