#include "tests/support/WindowDriver.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
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

constexpr int patienceMilliseconds = 600'000;

bool isFullScale()
{
    return qEnvironmentVariableIntValue("QUILLORY_FULL_SCALE") == 1;
}

/// Prefers a file system in memory, where files are written faster.
QString folderTemplate()
{
    const QFileInfo memory(u"/dev/shm"_s);
    return (memory.isWritable() ? memory.filePath() : QDir::tempPath()) + u"/quillory-scale-XXXXXX"_s;
}

void writeFileQuickly(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(content) != content.size())
        qFatal("Cannot write %s", qPrintable(path));
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
/// QUILLORY_FULL_SCALE=1 makes the trees as large as they get in practice and takes minutes; raise
/// QTEST_FUNCTION_TIMEOUT with it.
class tst_scale : public QObject
{
    Q_OBJECT

private slots:
    void worksWithManyFiles_data();
    void worksWithManyFiles();
    void holdsNoMoreMemoryFromScanToScan();
};

void tst_scale::worksWithManyFiles_data()
{
    QTest::addColumn<int>("groups");
    QTest::addColumn<int>("copies");
    QTest::addColumn<int>("unique");
    QTest::addColumn<int>("folders");
    QTest::addColumn<QString>("suffix");

    if (isFullScale()) {
        QTest::newRow("one flat folder") << 1000 << 2 << 198'000 << 1 << u"txt"_s;
        QTest::newRow("many groups") << 100'000 << 2 << 0 << 1000 << u"txt"_s;
        QTest::newRow("many members") << 1 << 50'000 << 0 << 50 << u"txt"_s;
        QTest::newRow("many pictures") << 1 << 50'000 << 0 << 50 << u"jpg"_s;
    } else {
        QTest::newRow("one flat folder") << 50 << 2 << 4900 << 1 << u"txt"_s;
        QTest::newRow("many groups") << 1500 << 2 << 0 << 20 << u"txt"_s;
        QTest::newRow("many members") << 1 << 3000 << 0 << 10 << u"txt"_s;
        QTest::newRow("many pictures") << 1 << 3000 << 0 << 10 << u"jpg"_s;
    }
}

void tst_scale::worksWithManyFiles()
{
    QFETCH(const int, groups);
    QFETCH(const int, copies);
    QFETCH(const int, unique);
    QFETCH(const int, folders);
    QFETCH(const QString, suffix);

    const QTemporaryDir tree(folderTemplate());
    QVERIFY(tree.isValid());
    for (int i = 0; i < folders; ++i)
        QVERIFY(QDir(tree.path()).mkdir(QString::number(i)));
    // All files have the same size, so each of them must be read.
    const auto write = [&](int content, int copy) {
        writeFileQuickly(u"%1/%2/%3-%4.%5"_s.arg(tree.path(), QString::number((content + copy) % folders),
                             QString::number(content), QString::number(copy), suffix),
            QByteArray::number(content).rightJustified(16, '0'));
    };
    for (int i = 0; i < groups; ++i) {
        for (int copy = 0; copy < copies; ++copy)
            write(i, copy);
    }
    for (int i = 0; i < unique; ++i)
        write(groups + i, 0);
    writeFileQuickly(tree.filePath(u"0/1.zip"_s), "archive");
    writeFileQuickly(tree.filePath(u"0/2.zip"_s), "archive");

    StageClock clock;
    WindowDriver driver;
    driver.setFolders({tree.path()});
    clock.endStage("start");
    driver.click("btnStartScan");
    QVERIFY(QTest::qWaitFor([&] { return driver.page() == u"duplicatespage"; }, patienceMilliseconds));
    clock.endStage("scan, delivery");
    QVERIFY(driver.waitForResults(patienceMilliseconds));
    QTest::qWait(0);
    clock.endStage("open");
    QCOMPARE(driver.labelText("labelStatsInfo"),
        u"Total %1 duplicates, %2 files, size 0.00 GB"_s.arg(groups + 1).arg(groups * copies + 2));
    const qsizetype checkedInFirstBatch = driver.checkedPaths().size();
    QVERIFY(checkedInFirstBatch >= (groups > 1 ? 20 : copies));

    driver.scrollToTheEnd();
    QCOMPARE(driver.tree()->topLevelItemCount(), groups + 1);
    clock.endStage("scroll");
    driver.tree()->expandAll();
    driver.tree()->scrollToBottom();
    QCoreApplication::processEvents();
    clock.endStage("expand");

    driver.click("btnSelectAll");
    QCoreApplication::processEvents();
    clock.endStage("select all");
    QCOMPARE(driver.checkedPaths().size(), checkedInFirstBatch);
    driver.click("btnUnselect");
    QCoreApplication::processEvents();
    clock.endStage("unselect");
    QCOMPARE(driver.checkedPaths(), QStringList());

    // While the small category is shown, the large one keeps its marks, loaded or not.
    driver.click("btnArchives");
    clock.endStage("other category");
    QCOMPARE(driver.filePaths().size(), 2);
    driver.click("btnSelectAll");
    driver.click("btnArchives");
    clock.endStage("select all");
    const QList<ShownBox> boxes = driver.clickAndCloseBoxes("btnRemoveSelected");
    clock.endStage("delete");
    const int deleted = groups * (copies - 1) + 1;
    QCOMPARE(boxes, QList<ShownBox>{deletionBox(deleted, 0)});
    QCOMPARE(driver.tree()->topLevelItemCount(), 0);
    qsizetype left = 0;
    for (int i = 0; i < folders; ++i)
        left += QDir(tree.filePath(QString::number(i))).entryList(QDir::Files).size();
    QCOMPARE(left, groups + unique + 1);
}

/// Scans again and again in one window.
void tst_scale::holdsNoMoreMemoryFromScanToScan()
{
    if (!memoryInUse())
        QSKIP("Nobody keeps count of this process's memory here");
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
        QVERIFY(driver.scan(patienceMilliseconds));
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
