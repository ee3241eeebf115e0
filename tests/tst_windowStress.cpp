#include "tests/stress/StressUser.h"
#include "tests/support/MessageFilter.h"
#include "tests/support/PoolThreads.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QRandomGenerator>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int folders = 100;
constexpr int pairsPerFolder = 100;
constexpr int filesInAll = folders * pairsPerFolder * 2;

/// In memory if there is enough space: removing thousands of files from a busy disk is slow.
QString templateOfFolder()
{
    constexpr qint64 enough = 1'000'000'000;
    const QStorageInfo memory(u"/dev/shm"_s);
    const bool fits = memory.isValid() && memory.isReady() && memory.bytesAvailable() > enough;
    return (fits ? memory.rootPath() : QDir::tempPath()) + u"/tst_windowStress-XXXXXX"_s;
}

} // namespace

/// Stress test: presses buttons and closes windows at random moments. No crash, no hang, and one file of each
/// content is left at the end.
///
/// QUILLORY_STRESS_ROUNDS sets the number of windows. QUILLORY_STRESS_SEED repeats the steps, but not their
/// exact times. Thousands of rounds also need a longer QTEST_FUNCTION_TIMEOUT (milliseconds).
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

    QTemporaryDir m_folder{templateOfFolder()};
    QScopedPointer<StressUser> m_user;
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
    writeTree();
    m_user.reset(new StressUser(m_folder.filePath(u"tree"_s), folders, seed));
}

/// Writes pairs of small files of a few sizes, which gives large size classes and groups of every category.
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
    writeFile(m_folder.filePath(u"untouched.txt"_s), "not to be scanned");
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
        m_user->useWindow();
        QVERIFY2(m_user->failure().isEmpty(), qPrintable(m_user->failure()));
    }
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
        ++left;
    }
    QCOMPARE(contents.size(), filesInAll / 2);
    QVERIFY(QFile::exists(m_folder.filePath(u"untouched.txt"_s)));
    qInfo("deleted files %d", filesInAll - left);
    QVERIFY(left < filesInAll || m_user->counts().deletions == 0);
}

void tst_windowStress::cleanupTestCase()
{
    const StressCounts counts = m_user->counts();
    m_user.reset();
    qInfo("scans %d, stops %d, results %d, deletions %d, closed during a scan %d, closed with results %d, "
          "slowest closing %lld ms",
        counts.scans, counts.stops, counts.results, counts.deletions, counts.closedDuringScan,
        counts.closedWithResults, static_cast<long long>(counts.slowestClosing));
    if (m_rounds >= 100) {
        QVERIFY(counts.scans > m_rounds);
        QVERIFY(counts.stops > 0);
        QVERIFY(counts.results > 0);
        QVERIFY(counts.deletions > 0);
        QVERIFY(counts.closedDuringScan > 0);
        QVERIFY(counts.closedWithResults > 0);
    }
}

QTEST_MAIN(tst_windowStress)
#include "tst_windowStress.moc"
