#include "analysis/FileHash.h"
#include "tests/support/AnalysisRecorder.h"
#include "tests/support/PoolThreads.h"
#include "tests/support/RandomBytes.h"
#include "tests/support/TestFiles.h"

#include <QFileInfo>
#include <QMutex>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <map>
#include <memory>

namespace {

/// A simple reference: analyses size by size and file by file, and counts all duplicates again after each
/// size.
struct SequentialAnalysis
{
    explicit SequentialAnalysis(const QList<QString> &paths)
    {
        std::map<qint64, QList<QString>> classes;
        for (const QString &path : paths)
            classes[QFileInfo(path).size()].append(path);
        qsizetype processed = 0;
        for (const auto &[size, members] : classes) {
            if (members.size() < 2) {
                processed += members.size();
                continue;
            }
            for (const QString &path : members) {
                if (const QByteArray hash = computeFileHash(path, 4096); !hash.isEmpty())
                    table[hash].append(path);
                ++processed;
                percents.append(static_cast<int>(33 + processed * 33 / paths.size()));
            }
            found.append(countDuplicates());
        }
    }

    [[nodiscard]] QList<QList<QString>> files() const
    {
        QList<QList<QString>> result;
        for (const auto &[hash, copies] : table) {
            if (copies.size() >= 2)
                result.append(copies);
        }
        return result;
    }

    std::map<QByteArray, QList<QString>> table;
    QList<int> percents;
    QList<qsizetype> found;

private:
    [[nodiscard]] qsizetype countDuplicates() const
    {
        qsizetype count = 0;
        for (const QList<QString> &copies : files())
            count += copies.size();
        return count;
    }
};

} // namespace

/// Progress, use of threads and abandonment of the analysis.
class tst_analysisProgress : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void movesFrom33To66Percent_data();
    void movesFrom33To66Percent();
    void countsTheFilesThatHaveACopy();
    void matchesTheSequentialAnalysis_data();
    void matchesTheSequentialAnalysis();
    void completesOnPoolThreads_data();
    void completesOnPoolThreads();
    void releasesNoThreadOutsideThePool();
    void returnsNothingWhenAbandoned_data();
    void returnsNothingWhenAbandoned();
    void returnsNothingWhenAbandonedAtTheEnd();

private:
    QString add(const QByteArray &content);
    QList<QString> addManySizes(int sizes);

    std::unique_ptr<QTemporaryDir> m_folder;
    int m_files = 0;
};

void tst_analysisProgress::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_files = 0;
}

QString tst_analysisProgress::add(const QByteArray &content)
{
    const QString path = m_folder->filePath(QString::number(++m_files));
    writeFile(path, content);
    return path;
}

/// Writes one to four files of each size, some of them equal.
QList<QString> tst_analysisProgress::addManySizes(int sizes)
{
    QList<QString> paths;
    for (int i = 0; i < sizes; ++i) {
        const QByteArray content = randomBytes(i * 97 % 9001, static_cast<quint32>(i));
        for (int copy = 0; copy <= i % 4; ++copy)
            paths.append(add(copy == 1 ? QByteArray(content.size(), 'x') : content));
    }
    return paths;
}

void tst_analysisProgress::movesFrom33To66Percent_data()
{
    // The sizes of the files; a negative size stands for a missing file.
    QTest::addColumn<QList<int>>("sizes");
    QTest::addColumn<QList<int>>("percents");

    QTest::newRow("nothing") << QList<int>{} << QList<int>{};
    QTest::newRow("one file") << QList<int>{5} << QList<int>{};
    QTest::newRow("all of different size") << QList<int>{1, 2, 3, 4} << QList<int>{};
    QTest::newRow("two files") << QList<int>{5, 5} << QList<int>{49, 66};
    QTest::newRow("four of ten, the largest")
        << QList<int>{9, 1, 2, 9, 3, 4, 9, 5, 6, 9} << QList<int>{56, 59, 62, 66};
    QTest::newRow("four of ten, the smallest")
        << QList<int>{1, 1, 2, 1, 3, 4, 1, 5, 6, 7} << QList<int>{36, 39, 42, 46};
    QTest::newRow("three classes") << QList<int>{30, 20, 20, 10, 30, 40, 10}
                                   << QList<int>{37, 42, 47, 51, 56, 61};
    QTest::newRow("missing files") << QList<int>{-1, 3, -2, 3} << QList<int>{41, 49, 57, 66};
}

void tst_analysisProgress::movesFrom33To66Percent()
{
    QFETCH(const QList<int>, sizes);
    QList<QString> paths;
    for (const int size : sizes)
        paths.append(
            size < 0 ? m_folder->filePath(QStringLiteral("gone%1").arg(size)) : add(QByteArray(size, 'x')));
    QTEST(Analysis(paths).percents, "percents");
}

void tst_analysisProgress::countsTheFilesThatHaveACopy()
{
    const QByteArray head = randomBytes(4096, 1);
    QList<QString> paths;
    const auto addFiles = [&](const QList<QByteArray> &contents) {
        for (const QByteArray &content : contents)
            paths.append(add(content));
    };
    addFiles({"x"}); // unique size: not reported
    addFiles({"aa", "aa"});
    addFiles({"aaa", "bbb", "aaa"});
    addFiles({"aaaa", "bbbb"});
    addFiles({"ccccc", "ccccc", "ccccc"});
    // Equal fingerprints, because only the heads count. The second line adds one file of another size.
    addFiles({head + "12", head + "34"});
    addFiles({head + "567", "8" + head + "90"});
    QCOMPARE(Analysis(paths).found, (QList<qsizetype>{2, 4, 4, 7, 9, 10}));
}

void tst_analysisProgress::matchesTheSequentialAnalysis_data()
{
    QTest::addColumn<int>("sizes");
    QTest::addColumn<int>("threads");

    for (const int threads : {1, 2, 8}) {
        for (const int sizes : {5, 43, 44, 130})
            QTest::addRow("%d sizes on %d threads", sizes, threads) << sizes << threads;
    }
}

/// Some rows have more size classes than the analysis processes at a time.
void tst_analysisProgress::matchesTheSequentialAnalysis()
{
    QFETCH(const int, sizes);
    QFETCH(const int, threads);
    const PoolSize size(threads);
    const QList<QString> paths = addManySizes(sizes);
    const SequentialAnalysis expected(paths);
    const Analysis analysis(paths);
    QVERIFY(expected.files().size() > 1);
    QCOMPARE(analysis.files(), expected.files());
    QCOMPARE(analysis.percents, expected.percents);
    QCOMPARE(analysis.found, expected.found);
}

void tst_analysisProgress::completesOnPoolThreads_data()
{
    QTest::addColumn<int>("threads");
    QTest::newRow("on the only thread") << 1;
    QTest::newRow("on both threads") << 2;
    QTest::newRow("on all four threads") << 4;
}

/// Every pool thread waits for work that only the pool can do.
void tst_analysisProgress::completesOnPoolThreads()
{
    QFETCH(const int, threads);
    const QList<QString> paths = addManySizes(60);
    const SequentialAnalysis expected(paths);
    const PoolSize size(threads);
    QMutex mutex;
    QList<QList<QList<QString>>> results;
    runOnPoolThreads(threads, [&] {
        const Analysis analysis(paths);
        const QMutexLocker lock(&mutex);
        results.append(analysis.files());
    });
    QCOMPARE(results, QList<QList<QList<QString>>>(threads, expected.files()));
}

/// A caller outside the pool must not release a thread: the pool would run more threads than its maximum.
void tst_analysisProgress::releasesNoThreadOutsideThePool()
{
    const PoolSize size(1);
    std::atomic<int> working{0};
    std::atomic<int> most{0};
    const auto work = [&, here = QThread::currentThread()] {
        if (QThread::currentThread() != here) {
            most = std::max(most.load(), ++working);
            QThread::msleep(1);
            --working;
        }
        return false;
    };
    const AnalysisCallbacks callbacks{
        .progress = [](int) {}, .duplicatesFound = [](qsizetype) {}, .abandoned = work};
    QVERIFY(!findDuplicates(addManySizes(20), callbacks).isEmpty());
    QCOMPARE(most.load(), 1);
}

void tst_analysisProgress::returnsNothingWhenAbandoned_data()
{
    QTest::addColumn<int>("patience");
    for (const int patience : {0, 1, 200, 380, 420, 500, 600})
        QTest::addRow("at question %d", patience) << patience;
}

/// The analysis ends at the next size class, at whatever point it is abandoned.
void tst_analysisProgress::returnsNothingWhenAbandoned()
{
    QFETCH(const int, patience);
    const QList<QString> paths = addManySizes(150);
    const PoolSize size(2);
    const Analysis analysis(paths, patience);
    QVERIFY(analysis.groups.isEmpty());
    // It checks once per file before it opens the first one, and once per size class.
    QVERIFY(analysis.found.size() <= std::max<qsizetype>(0, patience - paths.size()));
    QVERIFY(analysis.found.size() < SequentialAnalysis(paths).found.size());
}

void tst_analysisProgress::returnsNothingWhenAbandonedAtTheEnd()
{
    const QList<QString> paths = addManySizes(50);
    const Analysis whole(paths);
    QVERIFY(!whole.groups.isEmpty());
    QVERIFY(Analysis(paths, whole.questions - 1).groups.isEmpty());
    QCOMPARE(Analysis(paths, whole.questions).files(), whole.files());
}

QTEST_GUILESS_MAIN(tst_analysisProgress)
#include "tst_analysisProgress.moc"
