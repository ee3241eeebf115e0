#include "scan/FileCollection.h"
#include "tests/support/CopiesToScan.h"
#include "tests/support/DuplicateFiles.h"
#include "tests/support/LabelTexts.h"
#include "tests/support/PoolGate.h"
#include "tests/support/WindowDriver.h"

#include <QFile>
#include <QProgressBar>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int timerInterval = 500;
constexpr int timeout = 30'000;

/// The values that a progress bar has had.
QList<int> valuesOf(const QSignalSpy &changes)
{
    QList<int> values;
    for (const QList<QVariant> &change : changes)
        values.append(change.first().toInt());
    return values;
}

/// Stops the clock and the animation, which also write to the labels.
void stopTimers(WindowDriver &driver)
{
    for (QTimer *timer : driver.timers(timerInterval))
        timer->stop();
}

} // namespace

/// What the scan page shows during a scan: dots, time, counters, percentage and current file.
class tst_scanStatus : public QObject, private CopiesToScan
{
    Q_OBJECT

private slots:
    void init();
    void animatesTheStatusWithUpToThreeDots();
    void showsElapsedTimeAndCounters();
    void showsTheFileBeingScanned();
    void showsTheProgressOfTheWalk();
    void showsTheProgressOfTheAnalysis();
};

void tst_scanStatus::init()
{
    reset();
}

void tst_scanStatus::animatesTheStatusWithUpToThreeDots()
{
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    PoolGate gate;

    driver.click("btnStartScan");
    // The text appears by itself; the test triggers the dots.
    QTRY_VERIFY(driver.labelText("labelScanStatus").startsWith(u"Scanning, please wait"_s));
    QStringList texts;
    for (int i = 0; i < 12; ++i) {
        fire(driver.timers(timerInterval));
        texts.append(driver.labelText("labelScanStatus"));
    }
    const QString base = u"Scanning, please wait"_s;
    while (texts.size() > 5 && texts.first() != base)
        texts.removeFirst();
    QCOMPARE(texts.first(5), (QStringList{base, base + u'.', base + u".."_s, base + u"..."_s, base}));
}

void tst_scanStatus::showsElapsedTimeAndCounters()
{
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    PoolGate gate;

    driver.click("btnStartScan");
    QTRY_COMPARE(driver.timers(timerInterval).size(), 2);
    scannedFileCount = 1234;
    driver.find<QLabel>("labelDuplicatesFoundValue")->setText(u"7"_s);
    fire(driver.timers(timerInterval));
    QCOMPARE(driver.labelText("labelFilesScannedValue"), u"1234"_s);
    // Kept deliberately: the clock shows a count that nothing increases, so users see 0 during a scan.
    QCOMPARE(driver.labelText("labelDuplicatesFoundValue"), u"0"_s);
    const QRegularExpression running(u"^00:0[0-9]:[0-5][0-9]$"_s);
    QTRY_VERIFY(driver.labelText("labelElapsedTimeValue") != u"00:00:00");
    QVERIFY(running.match(driver.labelText("labelElapsedTimeValue")).hasMatch());
}

void tst_scanStatus::showsTheFileBeingScanned()
{
#ifdef Q_OS_WIN
    const QString name = u"&lt;b&gt;bold %1 &amp;.txt"_s;
#else
    const QString name = u"<b>bold<b> %1 &amp;.txt"_s;
#endif
    for (int i = 0; i < 150; ++i)
        writeCopies(m_folder->path(), {name.arg(i)}, "content");
    // All scans of the process share the count and never reset it: an earlier scan may have left it too high.
    lastReportedCount = 0;
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    LabelTexts seen(driver.find<QLabel>("labelCurrentFile"));
    const QSignalSpy progress(driver.find<QProgressBar>("progressBar"), &QProgressBar::valueChanged);
    QVERIFY(driver.scan());

    const QStringList scanning = seen.texts().filter(u"Scanning:"_s);
    QVERIFY(!scanning.isEmpty());
    for (const QString &text : scanning) {
        QVERIFY(text.startsWith(u"Scanning:"_s + m_folder->path()));
        QVERIFY(QFile::exists(text.mid(9)));
    }
    QCOMPARE(driver.find<QLabel>("labelCurrentFile")->textFormat(), Qt::PlainText);
    QCOMPARE(progress.last().first().toInt(), 100);
    // The first report comes at the 100th of 153 files at the latest.
    QVERIFY(std::any_of(progress.cbegin(), progress.cend(), [](const QList<QVariant> &change) {
        return change.first().toInt() <= 65 && change.first().toInt() > 0;
    }));
}

/// 0 after counting, then a report every 100 files (more often on a slow disk), 100 at the end.
void tst_scanStatus::showsTheProgressOfTheWalk()
{
    writePairs(m_folder->path(), 125, u"txt"_s);
    lastReportedCount = 0;
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    PoolGate gate;
    driver.click("btnStartScan");
    QTRY_COMPARE_WITH_TIMEOUT(driver.timers(timerInterval).size(), 2, timeout);
    stopTimers(driver);
    driver.find<QProgressBar>("progressBar")->setValue(99);
    driver.find<QLabel>("labelFilesScannedValue")->setText(u"stale"_s);
    const QSignalSpy bar(driver.find<QProgressBar>("progressBar"), &QProgressBar::valueChanged);
    LabelTexts files(driver.find<QLabel>("labelFilesScannedValue"));
    gate.runQueuedTasks();
    QTRY_COMPARE_WITH_TIMEOUT(driver.labelText("labelCurrentFile"), u"Analyzing..."_s, timeout);

    const QList<int> values = valuesOf(bar);
    QCOMPARE(values.first(), 0);
    QCOMPARE(values.last(), 100);
    QVERIFY(values.size() >= 4);
    QVERIFY(values.at(1) > 0 && values.at(1) <= 100 * 100 / 253);
    QVERIFY(std::ranges::is_sorted(values));
    // The walk has ended when the first report is shown.
    QCOMPARE(files.texts(), (QStringList{u"stale"_s, u"0"_s, u"253"_s}));
}

void tst_scanStatus::showsTheProgressOfTheAnalysis()
{
    writeCopies(m_folder->path(), {u"d.txt"_s, u"e.txt"_s}, "longer content");
    WindowDriver driver;
    driver.setFolders({m_folder->path()});
    PoolGate gate;
    driver.click("btnStartScan");
    QTRY_COMPARE_WITH_TIMEOUT(driver.timers(timerInterval).size(), 2, timeout);
    gate.runQueuedTasks();
    QTRY_COMPARE_WITH_TIMEOUT(driver.labelText("labelCurrentFile"), u"Analyzing..."_s, timeout);
    stopTimers(driver);
    const QSignalSpy bar(driver.find<QProgressBar>("progressBar"), &QProgressBar::valueChanged);
    LabelTexts found(driver.find<QLabel>("labelDuplicatesFoundValue"));
    gate.open();
    QVERIFY(driver.waitForResults());

    // The three files of one size, then the two of the other.
    QCOMPARE(valuesOf(bar), (QList<int>{39, 46, 52, 59, 66, 100}));
    QCOMPARE(found.texts(), (QStringList{u"0"_s, u"3"_s, u"5"_s}));
}

QTEST_MAIN(tst_scanStatus)
#include "tst_scanStatus.moc"
