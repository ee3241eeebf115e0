#include "tests/support/CollectedFiles.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <utility>

namespace {

/// A report is due after this time or after 100 files.
constexpr int reportMilliseconds = 800;
constexpr const char *reportedForTheTime = "The scan took so long that it reported for the time as well";

struct Report
{
    QString path;
    int percent = 0;
    qint32 scanned = 0;
};

/// Runs a collection and records its reports.
struct Scan
{
    explicit Scan(const QStringList &folders, const ScanOptions &options = everyType())
    {
        QElapsedTimer clock;
        clock.start();
        collected = collectFiles(folders, options, callbacks());
        slow = clock.hasExpired(reportMilliseconds);
    }

    /// Runs \a inBetween after the counting pass.
    Scan(const QStringList &folders, const std::function<void()> &inBetween)
    {
        CollectionCallbacks all = callbacks();
        all.counted = [counted = all.counted, &inBetween] {
            counted();
            inBetween();
        };
        collected = collectFiles(folders, everyType(), all);
    }

    [[nodiscard]] QList<int> percents() const
    {
        QList<int> result;
        for (const Report &report : reports)
            result.append(report.percent);
        return result;
    }

    [[nodiscard]] QList<qint32> counts() const
    {
        QList<qint32> result;
        for (const Report &report : reports)
            result.append(report.scanned);
        return result;
    }

    QStringList collected;
    QList<Report> reports;
    int counted = 0;
    bool reportedBeforeCounted = false;
    /// Whether the collection was so slow that a report may have been due to time alone.
    bool slow = false;

private:
    CollectionCallbacks callbacks()
    {
        return {
            .counted = [this] { ++counted; },
            .progress =
                [this](const QString &path, int percent) {
                    reportedBeforeCounted = reportedBeforeCounted || counted == 0;
                    reports.append({path, percent, scannedFileCount});
                },
            .abandoned = [] { return false; },
        };
    }
};

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
    void reportsAfterSomeTime();
    void exceedsHundredPercentWhenFilesAppear();
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
    // As in a process that has not scanned yet.
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
    write(QStringLiteral("a/%1.jpg"), 130);
    write(QStringLiteral("b/%1.jpg"), 120);
    const Scan scan({path(QStringLiteral("a")), path(QStringLiteral("b"))});
    QCOMPARE(scannedFileCount.load(), 250);
    QCOMPARE(acceptedFileCount.load(), 250);
    if (scan.slow)
        QSKIP(reportedForTheTime);
    QCOMPARE(scan.counts(), (QList<qint32>{100, 200}));
    QCOMPARE(scan.percents(), (QList<int>{40, 80}));
    QCOMPARE(lastReportedCount.load(), 200);
}

void tst_scanProgress::reportsThePathJustScanned()
{
    write(QStringLiteral("%1.jpg"), 300);
    const Scan scan({m_folder->path()});
    QVERIFY(scan.reports.size() >= 2);
    for (const Report &report : scan.reports) {
        QCOMPARE(report.path, scan.collected.at(report.scanned - 1));
        QCOMPARE(report.percent, report.scanned * 100 / 300);
    }
}

void tst_scanProgress::countsFilesOfOtherTypesAsScanned()
{
    write(QStringLiteral("%1.jpg"), 10);
    write(QStringLiteral("%1.txt"), 290);
    ScanOptions options = everyType();
    options.fileTypes = {QStringLiteral("picture")};
    const Scan scan({m_folder->path()}, options);
    QCOMPARE(scan.collected.size(), 10);
    QCOMPARE(scannedFileCount.load(), 300);
    QCOMPARE(acceptedFileCount.load(), 10);
    if (scan.slow)
        QSKIP(reportedForTheTime);
    QCOMPARE(scan.percents(), (QList<int>{33, 66, 100}));
}

void tst_scanProgress::countsFilesOnEveryLevel()
{
    QString folder = QStringLiteral("a/");
    for (int level = 0; level < 5; ++level) {
        write(folder + QStringLiteral("%1.jpg"), 20);
        write(folder + QStringLiteral("second/%1.jpg"), 20);
        // Hidden folders and the targets of links are not counted.
        write(folder + QStringLiteral(".hidden/%1.jpg"), 7);
        makeLink(path(QStringLiteral("a")), path(folder + QStringLiteral("link")));
        folder += QStringLiteral("deeper/");
    }
    const QString top = path(QStringLiteral("a"));
    const Scan scan({top, top});
    QCOMPARE(scan.collected.size(), 400);
    QVERIFY(scan.reports.size() >= 4);
    for (const Report &report : scan.reports)
        QCOMPARE(report.percent, report.scanned * 100 / 400);
}

/// The count of the last report outlives the scan: the next scan reports only 100 files beyond it.
void tst_scanProgress::keepsTheLastReportedCountOfThePreviousScan()
{
    write(QStringLiteral("a/%1.jpg"), 250);
    write(QStringLiteral("b/%1.jpg"), 70);
    const QString a = path(QStringLiteral("a"));
    const QString b = path(QStringLiteral("b"));
    const Scan first({a});
    const Scan smaller({a});
    const Scan larger({a, b});
    if (first.slow || smaller.slow || larger.slow)
        QSKIP(reportedForTheTime);
    QCOMPARE(first.counts(), (QList<qint32>{100, 200}));
    QCOMPARE(smaller.counts(), QList<qint32>());
    QCOMPARE(larger.counts(), QList<qint32>{300});
    QCOMPARE(larger.percents(), QList<int>{93});
    QCOMPARE(lastReportedCount.load(), 300);
}

void tst_scanProgress::reportsAfterSomeTime()
{
    write(QStringLiteral("%1.jpg"), 4);
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
                    QThread::msleep(reportMilliseconds + 20);
                return false;
            },
    };
    const QStringList collected = collectFiles({m_folder->path()}, everyType(), callbacks);
    QCOMPARE(collected.size(), 4);
    QVERIFY(reported.contains(collected.at(1)));
    QVERIFY(lastReportedCount <= 4);
    if (sinceReport.hasExpired(reportMilliseconds))
        QSKIP(reportedForTheTime);
    QCOMPARE(reported, QStringList{collected.at(1)});
}

void tst_scanProgress::exceedsHundredPercentWhenFilesAppear()
{
    write(QStringLiteral("%1.jpg"), 50);
    const Scan scan({m_folder->path()}, [this] { write(QStringLiteral("new %1.jpg"), 200); });
    QVERIFY(!scan.reports.isEmpty());
    for (const Report &report : scan.reports)
        QCOMPARE(report.percent, report.scanned * 100 / 50);
    QVERIFY(scan.reports.last().percent > 100);
}

void tst_scanProgress::reportsZeroPercentWhenNothingWasCounted()
{
    const Scan scan({m_folder->path()}, [this] { write(QStringLiteral("new %1.jpg"), 100); });
    QVERIFY(!scan.reports.isEmpty());
    for (const Report &report : scan.reports)
        QCOMPARE(report.percent, 0);
}

/// The files of all folders are counted before the first one is collected.
void tst_scanProgress::countsAllFoldersOnceBeforeReporting()
{
    write(QStringLiteral("a/%1.jpg"), 100);
    write(QStringLiteral("b/%1.jpg"), 100);
    const Scan scan({path(QStringLiteral("a")), path(QStringLiteral("b"))});
    QCOMPARE(scan.counted, 1);
    QVERIFY(!scan.reportedBeforeCounted);
    QVERIFY(!scan.reports.isEmpty());
    QCOMPARE(scan.reports.first().percent, scan.reports.first().scanned * 100 / 200);

    const Scan nothing({});
    QCOMPARE(nothing.counted, 1);
    QCOMPARE(nothing.reports.size(), 0);
}

void tst_scanProgress::endsWhenAbandoned_data()
{
    QTest::addColumn<int>("questions");
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
    QFETCH(const int, questions);
    QFETCH(const bool, allSkipped);
    const QString home = QDir(m_folder->path()).canonicalPath();
    qputenv("HOME", home.toUtf8());
    qputenv("XDG_CONFIG_HOME", home.toUtf8());
    const QStringList folders{path(QStringLiteral("Desktop")), path(QStringLiteral("Desktop/sub"))};
    write(QStringLiteral("Desktop/%1.jpg"), 10);
    write(QStringLiteral("Desktop/sub/%1.jpg"), 10);
    ScanOptions options = everyType();
    options.skipDesktop = allSkipped;
    const QStringList all = collect(folders);
    QCOMPARE(all.size(), 30);

    std::atomic<int> asked = 0;
    CollectionCallbacks callbacks = silentCallbacks();
    callbacks.abandoned = [&asked, questions] { return ++asked > questions; };
    const QStringList collected = collectFiles(folders, options, callbacks);
    QVERIFY2(asked > questions && asked <= questions + 6, qPrintable(QString::number(asked.load())));
    if (!allSkipped) {
        QVERIFY(collected.size() <= std::max(questions - 31, 0));
        QCOMPARE(collected, all.first(collected.size()));
    }
}

QTEST_GUILESS_MAIN(tst_scanProgress)
#include "tst_scanProgress.moc"
