#include "scan/ScanProgress.h"

#include <QTest>

#include <limits>

/// When a scan reports progress, and the percentage that it reports.
class tst_progressReports : public QObject
{
    Q_OBJECT

private slots:
    void truncatesThePercentage_data();
    void truncatesThePercentage();
    void reportsAfterOneHundredFiles();
    void reportsAfterEightHundredMilliseconds();
    void measuresFromTheLastReport();
    void waitsUntilThePreviousScansCountIsPassed();
};

void tst_progressReports::truncatesThePercentage_data()
{
    constexpr qint32 largest = std::numeric_limits<qint32>::max();
    QTest::addColumn<qint32>("scanned");
    QTest::addColumn<qint32>("total");
    QTest::addColumn<int>("percent");
    QTest::newRow("nothing counted") << 5 << 0 << 0;
    QTest::newRow("one of three") << 1 << 3 << 33;
    QTest::newRow("two of three") << 2 << 3 << 66;
    QTest::newRow("all") << 7 << 7 << 100;
    QTest::newRow("more than were counted") << 15 << 10 << 150;
    // A hundred times the count does not fit into 32 bits.
    QTest::newRow("22 million") << 22'000'000 << 44'000'000 << 50;
    QTest::newRow("largest count") << largest << largest << 100;
}

void tst_progressReports::truncatesThePercentage()
{
    QFETCH(const qint32, scanned);
    QFETCH(const qint32, total);
    QTEST(scannedPercent(scanned, total), "percent");
}

void tst_progressReports::reportsAfterOneHundredFiles()
{
    std::atomic<qint32> lastReportedCount = 0;
    ReportThrottle throttle(lastReportedCount);
    QVERIFY(!throttle.isDue(99, 0));
    QCOMPARE(lastReportedCount.load(), 0);
    QVERIFY(throttle.isDue(100, 0));
    QCOMPARE(lastReportedCount.load(), 100);
    QVERIFY(!throttle.isDue(199, 0));
    QVERIFY(throttle.isDue(200, 0));
}

void tst_progressReports::reportsAfterEightHundredMilliseconds()
{
    std::atomic<qint32> lastReportedCount = 0;
    ReportThrottle throttle(lastReportedCount);
    QVERIFY(!throttle.isDue(1, 799));
    QVERIFY(throttle.isDue(2, 800));
    QCOMPARE(lastReportedCount.load(), 2);
    QVERIFY(!throttle.isDue(3, 1599));
    QVERIFY(throttle.isDue(4, 1600));
}

/// A report due to the number of files postpones the next one due to time, and vice versa.
void tst_progressReports::measuresFromTheLastReport()
{
    std::atomic<qint32> lastReportedCount = 0;
    ReportThrottle throttle(lastReportedCount);
    QVERIFY(throttle.isDue(100, 500));
    QVERIFY(!throttle.isDue(101, 1299));
    QVERIFY(throttle.isDue(102, 1300));
    QVERIFY(!throttle.isDue(201, 1301));
    QVERIFY(throttle.isDue(202, 1302));
}

void tst_progressReports::waitsUntilThePreviousScansCountIsPassed()
{
    std::atomic<qint32> lastReportedCount = 1000;
    ReportThrottle throttle(lastReportedCount);
    QVERIFY(!throttle.isDue(100, 0));
    QVERIFY(!throttle.isDue(1099, 799));
    QVERIFY(throttle.isDue(1100, 799));
    ReportThrottle next(lastReportedCount);
    QVERIFY(next.isDue(1, 800));
    QCOMPARE(lastReportedCount.load(), 1);
}

QTEST_GUILESS_MAIN(tst_progressReports)
#include "tst_progressReports.moc"
