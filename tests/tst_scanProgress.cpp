#include "tests/support/CollectedFiles.h"
#include "tests/support/RecordedScan.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <memory>
#include <utility>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr const char *reportedDueToTime = "The scan was so slow that it also reported due to time";

} // namespace

/// The progress that a scan reports, and how it ends early.
class tst_scanProgress : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void reportsEveryHundredFiles();
    void reportsThePathJustScanned();
    void countsFilesOfOtherTypesAsScanned();
    void countsFilesOnEveryLevel();
    void keepsTheLastReportedCountOfThePreviousScan();
    void reportsAfter800Milliseconds();
    void exceedsAHundredPercentIfFilesAreAdded();
    void reportsZeroPercentWhenNothingWasCounted();
    void countsAllFoldersOnceBeforeReporting();
    void endsWhenAbandoned_data();
    void endsWhenAbandoned();

private:
    void write(const QString &name, int files) const;
    [[nodiscard]] QString path(const QString &name) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_scanProgress::initTestCase()
{
    QCOMPARE(scannedFileCount.load(), 0);
    QCOMPARE(acceptedFileCount.load(), 0);
    QCOMPARE(lastReportedCount.load(), 0);
}

void tst_scanProgress::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    // The values in a process that has not scanned yet.
    scannedFileCount = 0;
    acceptedFileCount = 0;
    lastReportedCount = 0;
}

QString tst_scanProgress::path(const QString &name) const
{
    return m_folder->filePath(name);
}

/// Writes files named \a name with %1 replaced by their number.
void tst_scanProgress::write(const QString &name, int files) const
{
    for (int i = 0; i < files; ++i)
        writeFile(path(name.arg(i)), "x");
}

void tst_scanProgress::reportsEveryHundredFiles()
{
    write(u"a/%1.jpg"_s, 130);
    write(u"b/%1.jpg"_s, 120);

    const RecordedScan scan({path(u"a"_s), path(u"b"_s)});
    QCOMPARE(scannedFileCount.load(), 250);
    QCOMPARE(acceptedFileCount.load(), 250);
    if (scan.slow)
        QSKIP(reportedDueToTime);
    QCOMPARE(scan.counts(), (QList<qint32>{100, 200}));
    QCOMPARE(scan.percents(), (QList<int>{40, 80}));
    QCOMPARE(lastReportedCount.load(), 200);
}

void tst_scanProgress::reportsThePathJustScanned()
{
    write(u"%1.jpg"_s, 300);
    const RecordedScan scan({m_folder->path()});
    QVERIFY(scan.reports.size() >= 2);
    for (const ScanReport &report : scan.reports) {
        QCOMPARE(report.path, scan.collected.at(report.scanned - 1));
        QCOMPARE(report.percent, report.scanned * 100 / 300);
    }
}

void tst_scanProgress::countsFilesOfOtherTypesAsScanned()
{
    write(u"%1.jpg"_s, 10);
    write(u"%1.txt"_s, 290);
    ScanOptions options = everyType();
    options.fileTypes = {u"picture"_s};

    const RecordedScan scan({m_folder->path()}, options);
    QCOMPARE(scan.collected.size(), 10);
    QCOMPARE(scannedFileCount.load(), 300);
    QCOMPARE(acceptedFileCount.load(), 10);
    if (scan.slow)
        QSKIP(reportedDueToTime);
    QCOMPARE(scan.percents(), (QList<int>{33, 66, 100}));
}

void tst_scanProgress::countsFilesOnEveryLevel()
{
    QString folder = u"a/"_s;
    for (int level = 0; level < 5; ++level) {
        write(folder + u"%1.jpg"_s, 20);
        write(folder + u"second/%1.jpg"_s, 20);
        // Hidden folders and the targets of links are not counted.
        write(folder + u".hidden/%1.jpg"_s, 7);
        makeLink(path(u"a"_s), path(folder + u"link"_s));
        folder += u"deeper/"_s;
    }
    const QString top = path(u"a"_s);

    const RecordedScan scan({top, top});
    QCOMPARE(scan.collected.size(), 400);
    QVERIFY(scan.reports.size() >= 4);
    for (const ScanReport &report : scan.reports)
        QCOMPARE(report.percent, report.scanned * 100 / 400);
}

/// The count of the last report outlives the scan: the next scan reports only 100 files beyond it.
void tst_scanProgress::keepsTheLastReportedCountOfThePreviousScan()
{
    write(u"a/%1.jpg"_s, 250);
    write(u"b/%1.jpg"_s, 70);
    const QString a = path(u"a"_s);
    const QString b = path(u"b"_s);

    const RecordedScan first({a});
    const RecordedScan smaller({a});
    const RecordedScan larger({a, b});
    if (first.slow || smaller.slow || larger.slow)
        QSKIP(reportedDueToTime);

    QCOMPARE(first.counts(), (QList<qint32>{100, 200}));
    QCOMPARE(smaller.counts(), QList<qint32>());
    QCOMPARE(larger.counts(), QList<qint32>{300});
    QCOMPARE(larger.percents(), QList<int>{93});
    QCOMPARE(lastReportedCount.load(), 300);
}

void tst_scanProgress::reportsAfter800Milliseconds()
{
    write(u"%1.jpg"_s, 4);
    lastReportedCount = 1000;
    bool collecting = false;
    bool waited = false;
    QStringList reported;
    QElapsedTimer sinceReport;
    const CollectionCallbacks callbacks{
        .counted = [&collecting] { collecting = true; },
        .progress =
            [&](const QString &file, int) {
                sinceReport.start();
                reported.append(file);
            },
        .abandoned =
            [&, caller = QThread::currentThread()] {
                // Called before each file on this thread, so the second collected file is late.
                if (QThread::currentThread() == caller && collecting && acceptedFileCount == 1 &&
                    !std::exchange(waited, true))
                    QThread::msleep(RecordedScan::reportMilliseconds + 20);
                return false;
            },
    };

    const QStringList collected = collectFiles({m_folder->path()}, everyType(), callbacks);
    QCOMPARE(collected.size(), 4);
    QVERIFY(reported.contains(collected.at(1)));
    QVERIFY(lastReportedCount <= 4);
    if (sinceReport.hasExpired(RecordedScan::reportMilliseconds))
        QSKIP(reportedDueToTime);
    QCOMPARE(reported, QStringList{collected.at(1)});
}

void tst_scanProgress::exceedsAHundredPercentIfFilesAreAdded()
{
    write(u"%1.jpg"_s, 50);
    const RecordedScan scan({m_folder->path()}, [this] { write(u"new %1.jpg"_s, 200); });
    QVERIFY(!scan.reports.isEmpty());
    for (const ScanReport &report : scan.reports)
        QCOMPARE(report.percent, report.scanned * 100 / 50);
    QVERIFY(scan.reports.last().percent > 100);
}

void tst_scanProgress::reportsZeroPercentWhenNothingWasCounted()
{
    const RecordedScan scan({m_folder->path()}, [this] { write(u"new %1.jpg"_s, 100); });
    QVERIFY(!scan.reports.isEmpty());
    for (const ScanReport &report : scan.reports)
        QCOMPARE(report.percent, 0);
}

/// The files of all folders are counted before the first one is collected.
void tst_scanProgress::countsAllFoldersOnceBeforeReporting()
{
    write(u"a/%1.jpg"_s, 100);
    write(u"b/%1.jpg"_s, 100);
    const RecordedScan scan({path(u"a"_s), path(u"b"_s)});
    QCOMPARE(scan.counted, 1);
    QVERIFY(!scan.reportedBeforeCounted);
    QVERIFY(!scan.reports.isEmpty());
    QCOMPARE(scan.reports.first().percent, scan.reports.first().scanned * 100 / 200);

    const RecordedScan nothing({});
    QCOMPARE(nothing.counted, 1);
    QCOMPARE(nothing.reports.size(), 0);
}

void tst_scanProgress::endsWhenAbandoned_data()
{
    QTest::addColumn<int>("allowedChecks");
    QTest::addColumn<bool>("allSkipped");

    // 30 files and a folder in each pass.
    QTest::newRow("before it begins") << 0 << false;
    QTest::newRow("while counting") << 5 << false;
    QTest::newRow("while collecting") << 40 << false;
    QTest::newRow("while skipping everything") << 40 << true;
}

/// After the scan is abandoned, each pass may check once more, and each thread once before it reads a folder.
void tst_scanProgress::endsWhenAbandoned()
{
    QFETCH(const int, allowedChecks);
    QFETCH(const bool, allSkipped);
    const QString home = QDir(m_folder->path()).canonicalPath();
    qputenv("HOME", home.toUtf8());
    qputenv("XDG_CONFIG_HOME", home.toUtf8());
    const QStringList folders{path(u"Desktop"_s), path(u"Desktop/sub"_s)};
    write(u"Desktop/%1.jpg"_s, 10);
    write(u"Desktop/sub/%1.jpg"_s, 10);
    ScanOptions options = everyType();
    options.skipDesktop = allSkipped;
    const QStringList all = collect(folders);
    QCOMPARE(all.size(), 30);

    std::atomic<int> checks = 0;
    CollectionCallbacks callbacks = silentCallbacks();
    callbacks.abandoned = [&checks, allowedChecks] { return ++checks > allowedChecks; };
    const QStringList collected = collectFiles(folders, options, callbacks);
    QVERIFY2(
        checks > allowedChecks && checks <= allowedChecks + 6, qPrintable(QString::number(checks.load())));
    if (!allSkipped) {
        QVERIFY(collected.size() <= std::max(allowedChecks - 31, 0));
        QCOMPARE(collected, all.first(collected.size()));
    }
}

QTEST_GUILESS_MAIN(tst_scanProgress)
#include "tst_scanProgress.moc"
