#include "scan/FileCount.h"
#include "scan/FolderEntries.h"
#include "scan/FolderWalk.h"
#include "tests/support/AnalysisRecorder.h"
#include "tests/support/CollectedFiles.h"
#include "tests/support/HostileTree.h"
#include "tests/support/QtWalk.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>

using Qt::StringLiterals::operator""_s;

namespace {

bool neverAbandoned()
{
    return false;
}

} // namespace

/// A walk through large and deep folders finds every file in the order of QDirIterator, yields files early
/// and can be stopped at any point.
class tst_largeTrees : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheOrderOfQDirIterator_data();
    void keepsTheOrderOfQDirIterator();
    void findsEveryFileOfALargeFolder();
    void returnsAFileBeforeTheFolderIsRead();
    void endsInTheMiddleOfALargeFolder();
    void checksForAbandonmentAtEveryEntry();
    void keepsOneFolderOpenAtAnyDepth();
    void reachesDeepFoldersWithASmallStack();
};

void tst_largeTrees::keepsTheOrderOfQDirIterator_data()
{
    QTest::addColumn<int>("folders");
    QTest::addColumn<int>("filesEach");
    QTest::addColumn<int>("levels");

    QTest::newRow("one large folder") << 1 << 1500 << 0;
    QTest::newRow("many folders") << 1500 << 1 << 0;
    QTest::newRow("many files in many folders") << 20 << 300 << 0;
    QTest::newRow("nested folders") << 1 << 1 << 300;
}

void tst_largeTrees::keepsTheOrderOfQDirIterator()
{
    QFETCH(const int, folders);
    QFETCH(const int, filesEach);
    QFETCH(const int, levels);
    const QTemporaryDir root;
    for (int i = 0; i < folders; ++i) {
        const QString folder = root.filePath(QString::number(i));
        QVERIFY(QDir().mkpath(folder + u"/d"_s.repeated(levels)));
        writeEmptyFiles(folder, filesEach, u"x"_s);
        writeFile(folder + u"/d"_s.repeated(levels) + u"/last"_s, "x");
    }
    const QStringList expected = filesByQt(root.path());
    QCOMPARE(expected.size(), folders * (filesEach + 1));
    QCOMPARE(countFiles({root.path()}, neverAbandoned), expected.size());

    FolderWalk walk({root.path()}, neverAbandoned);
    for (const QString &path : expected)
        QCOMPARE(walk.next(), path);
    QCOMPARE(walk.next(), std::nullopt);
    QCOMPARE(walk.next(), std::nullopt);
}

/// QUILLORY_LARGE_FOLDER sets the number of files.
void tst_largeTrees::findsEveryFileOfALargeFolder()
{
    const int count = qEnvironmentVariableIntValue("QUILLORY_LARGE_FOLDER");
    const int files = count > 0 ? count : 20'000;
    const QTemporaryDir root;
    writeEmptyFiles(root.path(), files, u"txt"_s);

    const QStringList collected = collect({root.path()});
    const Analysis analysis(collected);

    QCOMPARE(QSet<QString>(collected.cbegin(), collected.cend()).size(), files);
    QCOMPARE(collected.size(), files);
    QCOMPARE(analysis.groups.size(), 1);
    QCOMPARE(analysis.groups.constFirst().files, collected);
    QCOMPARE(analysis.groups.constFirst().markedFiles.size(), files - 1);
    QCOMPARE(analysis.percents.size(), files);
}

/// A folder of a million files must show progress before all of it has been read.
void tst_largeTrees::returnsAFileBeforeTheFolderIsRead()
{
    const QTemporaryDir root;
    writeEmptyFiles(root.path(), 1000, u"x"_s);
    int abandonChecks = 0;
    FolderWalk walk({root.path()}, [&abandonChecks] {
        ++abandonChecks;
        return false;
    });
    QVERIFY(walk.next());
    QVERIFY2(abandonChecks < 10, qPrintable(QString::number(abandonChecks)));
}

void tst_largeTrees::endsInTheMiddleOfALargeFolder()
{
    const QTemporaryDir root;
    writeEmptyFiles(root.path(), 1000, u"x"_s);
    bool abandoned = false;
    FolderWalk walk({root.path()}, [&abandoned] { return abandoned; });
    QVERIFY(walk.next());
    abandoned = true;
    QCOMPARE(walk.next(), std::nullopt);
    // An abandoned walk stays at its end.
    QCOMPARE(walk.next(), std::nullopt);
}

/// The walk reads the rest of a folder, perhaps a million files, before it enters a subfolder.
void tst_largeTrees::checksForAbandonmentAtEveryEntry()
{
    constexpr int subfolders = 20;
    constexpr int files = 1000;
    const QTemporaryDir root;
    for (int i = 0; i < subfolders; ++i)
        QVERIFY(QDir(root.path()).mkdir(QString::number(i)));
    writeEmptyFiles(root.path(), files, u"x"_s);
    FolderEntries order(root.path());
    int filesBefore = 0;
    while (order.next() && !order.isFolder())
        ++filesBefore;

    int abandonChecks = 0;
    FolderWalk walk({root.path()}, [&abandonChecks] {
        ++abandonChecks;
        return false;
    });
    for (int i = 0; i < filesBefore; ++i)
        QVERIFY(walk.next());
    abandonChecks = 0;
    static_cast<void>(walk.next());
    QVERIFY2(abandonChecks > files + subfolders - filesBefore, qPrintable(QString::number(abandonChecks)));
}

void tst_largeTrees::keepsOneFolderOpenAtAnyDepth()
{
#ifdef Q_OS_LINUX
    const QTemporaryDir root;
    constexpr int levels = 50;
    const QString deepest = root.path() + u"/d"_s.repeated(levels);
    writeFile(deepest + u"/file"_s, "x");
    const auto openDescriptors = [] {
        return QDir(u"/proc/self/fd"_s)
            .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
            .size();
    };

    const qsizetype before = openDescriptors();
    FolderWalk walk({root.path()}, neverAbandoned);
    QCOMPARE(walk.next(), deepest + u"/file"_s);
    QCOMPARE(openDescriptors(), before + 1);
#else
    QSKIP("Open descriptors are not listed here");
#endif
}

void tst_largeTrees::reachesDeepFoldersWithASmallStack()
{
    const HostileTree root;
    constexpr int levels = 1900;
    if (!writeDeepFile(root.path(), levels, "d", "file", "x"))
        QSKIP("Paths cannot be this long here");
    qsizetype found = 0;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        FolderWalk walk({root.path()}, neverAbandoned);
        while (walk.next())
            ++found;
    }));
    // Enough for a loop, too little for recursion.
    thread->setStackSize(256 * 1024);
    thread->start();
    QVERIFY(thread->wait());
    QCOMPARE(found, 1);
}

QTEST_GUILESS_MAIN(tst_largeTrees)
#include "tst_largeTrees.moc"
