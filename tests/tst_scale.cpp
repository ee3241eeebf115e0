#include "tests/support/LargeTree.h"
#include "tests/support/WindowDriver.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <optional>

#ifdef Q_OS_LINUX
#include <malloc.h>
#include <unistd.h>
#endif

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int timeoutMilliseconds = 600'000;

bool isFullScale()
{
    return qEnvironmentVariableIntValue("QUILLORY_FULL_SCALE") == 1;
}

/// Prints the duration of each stage, and the longest time in it without an iteration of the event loop.
class StageClock
{
public:
    StageClock()
    {
        QObject::connect(&m_beat, &QTimer::timeout, &m_beat, [this] { endStall(); });
        m_beat.start(5);
        m_stage.start();
        m_sinceBeat.start();
    }

    void endStage(const char *name)
    {
        endStall();
        qInfo("%-14s %6lld ms, longest stall %6lld ms", name, m_stage.restart(), m_longest);
        m_longest = 0;
    }

private:
    void endStall()
    {
        m_longest = std::max(m_longest, m_sinceBeat.restart());
    }

    QTimer m_beat;
    QElapsedTimer m_stage;
    QElapsedTimer m_sinceBeat;
    qint64 m_longest = 0;
};

/// Bytes that the process uses.
struct Memory
{
    qint64 heap = 0;
    qint64 resident = 0;
};

std::optional<Memory> memoryInUse()
{
#if defined(Q_OS_LINUX) && defined(__GLIBC__)
    const auto heap = mallinfo2();
    QFile file(u"/proc/self/statm"_s);
    if (heap.uordblks == 0 || !file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray pages = file.readAll().split(' ').value(1);
    return Memory{
        static_cast<qint64>(heap.uordblks + heap.hblkhd), pages.toLongLong() * sysconf(_SC_PAGESIZE)};
#else
    return {};
#endif
}

} // namespace

/// Very large results: the page still opens, scrolls, marks and deletes.
///
/// With QUILLORY_FULL_SCALE=1 the trees are as large as they get in practice. This takes minutes and needs a
/// longer QTEST_FUNCTION_TIMEOUT (milliseconds).
class tst_scale : public QObject
{
    Q_OBJECT

private slots:
    void handlesManyFiles_data();
    void handlesManyFiles();
    void usesNoMoreMemoryFromScanToScan();

private:
    static void scan(WindowDriver &driver, StageClock &clock);
    static void scrollAndExpand(WindowDriver &driver, StageClock &clock);
    /// Selects all and unselects all again; the loaded rows have \a checked checked rows in between.
    static void selectAndUnselect(WindowDriver &driver, StageClock &clock, qsizetype checked);
    /// Selects all while only the archives are shown, and checks that Delete removes \a marked files.
    static void deleteAll(WindowDriver &driver, StageClock &clock, int marked);
};

void tst_scale::scan(WindowDriver &driver, StageClock &clock)
{
    driver.click("btnStartScan");
    QVERIFY(QTest::qWaitFor([&] { return driver.page() == u"duplicatespage"; }, timeoutMilliseconds));
    clock.endStage("scan, delivery");
    QVERIFY(driver.waitForResults(timeoutMilliseconds));
    QTest::qWait(0);
    clock.endStage("open");
}

void tst_scale::scrollAndExpand(WindowDriver &driver, StageClock &clock)
{
    driver.scrollToTheEnd();
    clock.endStage("scroll");
    driver.tree()->expandAll();
    driver.tree()->scrollToBottom();
    QCoreApplication::processEvents();
    clock.endStage("expand");
}

void tst_scale::selectAndUnselect(WindowDriver &driver, StageClock &clock, qsizetype checked)
{
    driver.click("btnSelectAll");
    QCoreApplication::processEvents();
    clock.endStage("select all");
    QCOMPARE(driver.checkedPaths().size(), checked);
    driver.click("btnUnselect");
    QCoreApplication::processEvents();
    clock.endStage("unselect");
    QCOMPARE(driver.checkedPaths(), QStringList());
}

void tst_scale::deleteAll(WindowDriver &driver, StageClock &clock, int marked)
{
    driver.click("btnArchives");
    clock.endStage("other category");
    QCOMPARE(driver.filePaths().size(), 2);
    driver.click("btnSelectAll");
    // While the archives are shown, the other category keeps its marks, loaded or not.
    driver.click("btnArchives");
    clock.endStage("select all");
    const QList<ShownBox> boxes = driver.clickAndCloseBoxes("btnRemoveSelected");
    clock.endStage("delete");
    QCOMPARE(boxes, QList<ShownBox>{deletionBox(marked, 0)});
    QCOMPARE(driver.tree()->topLevelItemCount(), 0);
}

void tst_scale::handlesManyFiles_data()
{
    QTest::addColumn<TreeShape>("shape");
    const auto row = [](const char *name, const TreeShape &shape) { QTest::newRow(name) << shape; };
    const QString text = u"txt"_s;
    const QString picture = u"jpg"_s;

    if (isFullScale()) {
        row("one flat folder",
            {.groups = 1000, .copies = 2, .unique = 198'000, .folders = 1, .suffix = text});
        row("many groups", {.groups = 100'000, .copies = 2, .folders = 1000, .suffix = text});
        row("many members", {.groups = 1, .copies = 50'000, .folders = 50, .suffix = text});
        row("many pictures", {.groups = 1, .copies = 50'000, .folders = 50, .suffix = picture});
    } else {
        row("one flat folder", {.groups = 50, .copies = 2, .unique = 4900, .folders = 1, .suffix = text});
        row("many groups", {.groups = 1500, .copies = 2, .folders = 20, .suffix = text});
        row("many members", {.groups = 1, .copies = 3000, .folders = 10, .suffix = text});
        row("many pictures", {.groups = 1, .copies = 3000, .folders = 10, .suffix = picture});
    }
}

void tst_scale::handlesManyFiles()
{
    QFETCH(const TreeShape, shape);
    const QTemporaryDir tree(folderTemplate());
    QVERIFY(tree.isValid());
    writeTree(tree.path(), shape);
    StageClock clock;
    WindowDriver driver;
    driver.setFolders({tree.path()});
    clock.endStage("start");

    scan(driver, clock);
    QCOMPARE(driver.labelText("labelStatsInfo"),
        u"Total %1 duplicates, %2 files, size 0.00 GB"_s.arg(shape.groups + 1)
            .arg(shape.groups * shape.copies + 2));
    const qsizetype checkedInFirstBatch = driver.checkedPaths().size();
    QVERIFY(checkedInFirstBatch >= (shape.groups > 1 ? 20 : shape.copies));

    scrollAndExpand(driver, clock);
    QCOMPARE(driver.tree()->topLevelItemCount(), shape.groups + 1);
    selectAndUnselect(driver, clock, checkedInFirstBatch);
    deleteAll(driver, clock, shape.groups * (shape.copies - 1) + 1);
    QCOMPARE(fileCount(tree.path(), shape), shape.groups + shape.unique + 1);
}

/// Scans again and again in one window.
void tst_scale::usesNoMoreMemoryFromScanToScan()
{
    if (!memoryInUse())
        QSKIP("Memory use cannot be measured here");
    const int groups = isFullScale() ? 5000 : 300;
    constexpr int rounds = 20;
    constexpr int warmUp = 3;

    const QTemporaryDir tree(folderTemplate());
    WindowDriver driver;
    driver.setFolders({tree.path()});
    Memory reference;
    Memory now;
    for (int round = 1; round <= rounds; ++round) {
        for (int i = 0; i < 2 * groups; ++i) {
            const QString name = u"%1.%2"_s.arg(QString::number(i), i % 4 < 2 ? u"jpg"_s : u"txt"_s);
            writeFileQuickly(tree.filePath(name), QByteArray::number(i / 2));
        }
        QVERIFY(driver.scan(timeoutMilliseconds));
        driver.scrollToTheEnd();
        QCOMPARE(driver.tree()->topLevelItemCount(), groups);
        driver.click("btnPictures");
        driver.click("btnSelectAll");
        driver.scrollToTheEnd();
        QCOMPARE(driver.tree()->topLevelItemCount(), groups / 2);
        QCOMPARE(driver.clickAndCloseBoxes("btnRemoveSelected").value(0).title, u"Deletion Complete"_s);
        driver.click("btnBack");
        QTest::qWait(0);
        now = memoryInUse().value_or(Memory());
        qInfo("round %2d: %lld KiB in the heap, %lld KiB resident", round, now.heap / 1024,
            now.resident / 1024);
        if (round == warmUp)
            reference = now;
    }
    QCOMPARE_LT(now.heap, reference.heap + reference.heap / 50);
    QCOMPARE_LT(now.resident, reference.resident + reference.resident / 50);
}

QTEST_MAIN(tst_scale)
#include "tst_scale.moc"
