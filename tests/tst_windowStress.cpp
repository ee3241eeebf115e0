#include "tests/support/MessageFilter.h"
#include "tests/support/PoolThreads.h"
#include "tests/support/Slowdown.h"
#include "tests/support/TestFiles.h"
#include "tests/support/Watchdog.h"
#include "tests/support/WindowDriver.h"

#include <QDialog>
#include <QDir>
#include <QDirIterator>
#include <QMessageBox>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QThreadPool>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int folders = 100;
constexpr int pairsPerFolder = 100;
constexpr int filesInAll = folders * pairsPerFolder * 2;
constexpr int patienceMilliseconds = 30'000 * slowdown;
constexpr int closingMilliseconds = 2000 * slowdown;
// Enough duplicates must be left to the last window.
constexpr int deletionsAtMost = 150;

/// The buttons to press. A button that is listed more often is pressed more often.
const QList<const char *> &buttons()
{
    static const QList<const char *> names{"btnStartScan", "btnStartScan", "btnStartScan", "btnStartScan",
        "btnStopScan", "btnScanOptions", "btnBack", "btnSelectAll", "btnUnselect", "btnRemoveSelected",
        "btnAll", "btnAll", "btnPictures", "btnVideos", "btnDocuments", "btnOthers"};
    return names;
}

/// In memory where there is room: thousands of files take longest to be taken off a busy disk again.
QString templateOfFolder()
{
    constexpr qint64 ample = 1'000'000'000;
    const QStorageInfo memory(u"/dev/shm"_s);
    const bool room = memory.isValid() && memory.isReady() && memory.bytesAvailable() > ample;
    return (room ? memory.rootPath() : QDir::tempPath()) + u"/tst_windowStress-XXXXXX"_s;
}

/// Counts what the test has reached, to prove that it covers every state.
struct Reached
{
    int scans = 0;
    int stops = 0;
    int results = 0;
    int deletions = 0;
    int closedDuringScan = 0;
    int closedWithResults = 0;
    qint64 slowestClosing = 0;
};

} // namespace

/// A user who presses whatever can be pressed at random moments, and closes the window at random moments. No
/// crash, no hang, and of every content a file is left in the end.
///
/// QUILLORY_STRESS_ROUNDS sets the number of windows in all, QUILLORY_STRESS_SEED repeats the steps, though
/// not their exact moments. Thousands of rounds need a longer QTEST_FUNCTION_TIMEOUT (milliseconds) as well.
class tst_windowStress : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void survivesRandomActions_data();
    void survivesRandomActions();
    void keepsAFileOfEachContent();
    void cleanupTestCase();

private:
    void writeTree();
    void openWindow();
    void round();
    void step();
    void pressSomething();
    void press(const char *button);
    void scroll();
    void letTimePass();
    void waitForResults();
    void closeDialog(QWidget *dialog);
    void closeWindow();
    void sign(const QString &doing);
    [[nodiscard]] int below(qsizetype limit)
    {
        return static_cast<int>(m_random.bounded(static_cast<quint32>(limit)));
    }

    QTemporaryDir m_folder{templateOfFolder()};
    QScopedPointer<Watchdog> m_watchdog;
    QScopedPointer<WindowDriver> m_driver;
    QRandomGenerator m_random;
    QStringList m_log;
    QString m_failure;
    Reached m_reached;
    int m_rounds = 102;
};

void tst_windowStress::initTestCase()
{
    dropRepeatedMessages();
    if (const int wanted = qEnvironmentVariableIntValue("QUILLORY_STRESS_ROUNDS"); wanted > 0)
        m_rounds = wanted;
    const quint32 seed = qEnvironmentVariableIsSet("QUILLORY_STRESS_SEED")
                             ? qEnvironmentVariable("QUILLORY_STRESS_SEED").toUInt()
                             : QRandomGenerator::global()->generate();
    qInfo("QUILLORY_STRESS_SEED=%u QUILLORY_STRESS_ROUNDS=%d", seed, m_rounds);
    m_random.seed(seed);
    writeTree();
    m_watchdog.reset(new Watchdog(patienceMilliseconds));
}

/// Pairs of small files of a few sizes, so that there are large size classes and groups of every category.
void tst_windowStress::writeTree()
{
    static const QStringList suffixes{u"jpg"_s, u"mp4"_s, u"txt"_s, u"dat"_s};
    for (int folder = 0; folder < folders; ++folder) {
        const QString path = m_folder.filePath(u"tree/%1/"_s.arg(folder));
        for (int pair = 0; pair < pairsPerFolder; ++pair) {
            const QString ending = u"%1.%2"_s.arg(QString::number(pair), suffixes.at(pair % suffixes.size()));
            const QByteArray content = ending.toUtf8() + path.toUtf8();
            for (const QString &name : {u"first"_s, u"second"_s})
                writeFile(path + name + ending, content.leftJustified(200 + pair % 7));
        }
    }
    writeFile(m_folder.filePath(u"bystander.txt"_s), "not to be scanned");
}

void tst_windowStress::survivesRandomActions_data()
{
    QTest::addColumn<int>("threads");
    for (const int threads : {1, 2, 8})
        QTest::addRow("pool of %d", threads) << threads;
}

void tst_windowStress::survivesRandomActions()
{
    QFETCH(const int, threads);
    const PoolSize pool(threads);
    for (int i = 0; i < m_rounds / 3; ++i) {
        m_log.clear();
        m_failure.clear();
        openWindow();
        round();
        closeWindow();
        QVERIFY2(m_failure.isEmpty(), qPrintable(m_failure + u"after: "_s + m_log.join(u", "_s)));
    }
}

/// Two of three windows scan a small part of the tree and so have results in no time.
void tst_windowStress::openWindow()
{
    m_driver.reset(new WindowDriver);
    QStringList places;
    for (int n = below(2) ? 1 : 10; n > 0; --n)
        places.append(m_folder.filePath(u"tree/%1"_s.arg(below(folders))));
    m_driver->listFolders(below(3) ? places : QStringList{m_folder.filePath(u"tree"_s)});
    sign(u"open"_s);
}

void tst_windowStress::round()
{
    press("btnStartScan");
    if (below(4) == 0)
        waitForResults();
    for (int steps = below(16); steps > 0; --steps) {
        letTimePass();
        step();
    }
    letTimePass();
}

void tst_windowStress::step()
{
    switch (below(10)) {
    case 0:
        waitForResults();
        break;
    case 1:
        scroll();
        break;
    default:
        pressSomething();
    }
}

void tst_windowStress::pressSomething()
{
    QList<const char *> within;
    for (const char *button : buttons()) {
        if (m_driver->find(button)->isVisible() && m_driver->find(button)->isEnabled())
            within.append(button);
    }
    // With nothing but Stop within reach, no scan would ever come to its end.
    if (within.size() > 1 || (within.size() == 1 && below(2)))
        press(within.at(below(within.size())));
}

void tst_windowStress::press(const char *button)
{
    sign(QLatin1StringView(button));
    const QLatin1StringView name(button);
    if (name == u"btnRemoveSelected") {
        if (m_reached.deletions == deletionsAtMost)
            return;
        // With another category shown, a deletion would take the whole tree's copies at once.
        m_driver->click("btnAll");
        ++m_reached.deletions;
    }
    m_reached.scans += name == u"btnStartScan" ? 1 : 0;
    m_reached.stops += name == u"btnStopScan" ? 1 : 0;
    withModalDialogs(
        [this, button] { m_driver->click(button); }, [this](QWidget *dialog) { closeDialog(dialog); });
}

/// Leaves the dialog open for a while, so that scans go on and results arrive behind it.
void tst_windowStress::closeDialog(QWidget *dialog)
{
    if (below(6) != 0)
        return;
    if (auto *const box = qobject_cast<QMessageBox *>(dialog))
        box->button(QMessageBox::Ok)->click();
    else if (auto *const options = qobject_cast<QDialog *>(dialog))
        options->done(below(2) ? QDialog::Accepted : QDialog::Rejected);
}

void tst_windowStress::scroll()
{
    sign(u"scroll"_s);
    QScrollBar *const bar = m_driver->tree()->verticalScrollBar();
    bar->setValue(below(2) ? bar->maximum() : below(bar->maximum() + 1));
}

void tst_windowStress::letTimePass()
{
    static const QList<int> durations{0, 0, 1, 3, 10, 30, 100};
    const int milliseconds = durations.at(below(durations.size()));
    sign(u"%1 ms"_s.arg(milliseconds));
    // Without any event in between, two presses come closer together than a hand could make them.
    if (milliseconds > 0)
        QTest::qWait(milliseconds);
}

void tst_windowStress::waitForResults()
{
    sign(u"wait for results"_s);
    const auto scanIsOver = [this] {
        m_watchdog->alive(m_log.join(u", "_s));
        return m_driver->page() != u"scanpage";
    };
    if (!QTest::qWaitFor(scanIsOver, 2 * patienceMilliseconds))
        m_failure += u"No results came "_s;
    m_reached.results += m_driver->page() == u"duplicatespage" ? 1 : 0;
}

void tst_windowStress::closeWindow()
{
    m_reached.closedDuringScan += m_driver->page() == u"scanpage" ? 1 : 0;
    m_reached.closedWithResults += m_driver->page() == u"duplicatespage" ? 1 : 0;
    sign(u"close"_s);
    QElapsedTimer timer;
    timer.start();
    m_driver.reset();
    // Not waitForDone(), which would also take the idle threads down, one after the other.
    while (QThreadPool::globalInstance()->activeThreadCount() > 0 && timer.elapsed() <= closingMilliseconds)
        QThread::msleep(1);
    m_reached.slowestClosing = std::max(m_reached.slowestClosing, timer.elapsed());
    if (timer.elapsed() > closingMilliseconds)
        m_failure += u"The window was not gone in time "_s;
    // Whatever was still queued for the window must not reach it.
    QCoreApplication::processEvents();
}

void tst_windowStress::sign(const QString &doing)
{
    m_log.append(doing);
    m_watchdog->alive(m_log.join(u", "_s));
}

/// The test changes no check box, so one file of each pair is never marked.
void tst_windowStress::keepsAFileOfEachContent()
{
    QSet<QByteArray> contents;
    QDirIterator files(m_folder.filePath(u"tree"_s), QDir::Files, QDirIterator::Subdirectories);
    int left = 0;
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        contents.insert(file.readAll());
        m_watchdog->alive(u"read the files"_s);
        ++left;
    }
    QCOMPARE(contents.size(), filesInAll / 2);
    QVERIFY(QFile::exists(m_folder.filePath(u"bystander.txt"_s)));
    qInfo("deleted files %d", filesInAll - left);
    QVERIFY(left < filesInAll || m_reached.deletions == 0);
}

void tst_windowStress::cleanupTestCase()
{
    m_watchdog.reset();
    qInfo("scans %d, stops %d, results %d, deletions %d, closed during a scan %d, closed with results %d, "
          "slowest closing %lld ms",
        m_reached.scans, m_reached.stops, m_reached.results, m_reached.deletions, m_reached.closedDuringScan,
        m_reached.closedWithResults, static_cast<long long>(m_reached.slowestClosing));
    if (m_rounds >= 100) {
        QVERIFY(m_reached.scans > m_rounds);
        QVERIFY(m_reached.stops > 0);
        QVERIFY(m_reached.results > 0);
        QVERIFY(m_reached.deletions > 0);
        QVERIFY(m_reached.closedDuringScan > 0);
        QVERIFY(m_reached.closedWithResults > 0);
    }
}

QTEST_MAIN(tst_windowStress)
#include "tst_windowStress.moc"
