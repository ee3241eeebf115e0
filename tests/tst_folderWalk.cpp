#include "scan/FileCount.h"
#include "scan/FolderEntries.h"
#include "scan/ReadAheadWalk.h"
#include "tests/support/HostileTree.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QRandomGenerator>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>

using Qt::StringLiterals::operator""_s;

namespace {

/// What Qt's own walk yields, which is what a walk has to yield, in that order.
QStringList filesByQt(const QString &folder)
{
    QStringList files;
    QDirIterator walk(folder, QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (walk.hasNext())
        files.append(walk.next());
    return files;
}

QStringList filesReadAhead(const QStringList &folders)
{
    QStringList files;
    ReadAheadWalk walk(folders, [] { return false; });
    while (const std::optional<QString> file = walk.next())
        files.append(*file);
    return files;
}

/// Files, folders and empty folders below \a folder, the same for the same \a seed.
void writeRandomTree(const QString &folder, quint32 seed)
{
    QRandomGenerator random(seed);
    QStringList folders{folder};
    for (int i = 0; i < 200; ++i) {
        const QString parent = folders.at(random.bounded(static_cast<int>(folders.size())));
        const QString path = u"%1/%2%3"_s.arg(parent, random.bounded(8) == 0 ? u"."_s : QString()).arg(i);
        if (random.bounded(3) == 0) {
            QVERIFY(QDir().mkpath(path));
            folders.append(path);
        } else {
            writeFile(path, "x");
        }
    }
}

} // namespace

/// A walk yields what Qt's own yields, in the same order, however many threads read the folders.
class tst_folderWalk : public QObject
{
    Q_OBJECT

private slots:
    void yieldsWhatQtYields_data();
    void yieldsWhatQtYields();
    void walksTheFoldersInTheOrderGiven();
    void yieldsWhatOnlyOneFolderHolds();
    void readsFarAheadInOrder_data();
    void readsFarAheadInOrder();
    void readsWhatIsWantedHoweverMuchIsAhead();
    void endsWithFoldersLeftUnread();
    void endsFarAboveTheDeepestFolder();
};

void tst_folderWalk::yieldsWhatQtYields_data()
{
    using Fill = std::function<void(const QString &folder)>;
    QTest::addColumn<Fill>("fill");
    // Added to the folder's path.
    QTest::addColumn<QString>("walked");
    QTest::addColumn<bool>("hasFiles");

    const Fill nothing = [](const QString &) {};
    for (quint32 seed = 1; seed <= 5; ++seed) {
        QTest::addRow("random tree %u", seed)
            << Fill([seed](const QString &folder) { writeRandomTree(folder, seed); }) << QString() << true;
    }
    const Fill smallTree = [](const QString &folder) {
        for (const QString &name : {u"a"_s, u"sub/b"_s, u"sub/sub/c"_s, u".hidden/d"_s, u"sub/.e"_s})
            writeFile(folder + u'/' + name, "x");
    };
    QTest::newRow("small tree") << smallTree << QString() << true;
    QTest::newRow("path with a slash at its end") << smallTree << u"/"_s << true;
    QTest::newRow("path with two slashes") << smallTree << u"//sub"_s << true;
    QTest::newRow("path with dots") << smallTree << u"/sub/../sub/."_s << true;
    QTest::newRow("hidden folder, asked for") << smallTree << u"/.hidden"_s << true;
    QTest::newRow("a file") << smallTree << u"/a"_s << false;
    QTest::newRow("empty folder") << nothing << QString() << false;
    QTest::newRow("no such folder") << nothing << u"/missing"_s << false;
    QTest::newRow("odd names") << Fill([](const QString &folder) {
        for (const HostileName &name : hostileNames()) {
            // Not every system has every name.
            const QString subfolder = folder + u"/folders/"_s + name.name;
            if (QDir().mkpath(subfolder))
                QFile(subfolder + u"/file"_s).open(QIODevice::WriteOnly);
            QDir().mkpath(folder + u"/files"_s);
            QFile(folder + u"/files/"_s + name.name).open(QIODevice::WriteOnly);
        }
    }) << QString() << true;
    QTest::newRow("names that are no text") << Fill([](const QString &folder) {
        writeFile(folder + u"/é"_s, "x");
        writeFileWithRawName(folder, "\xff", "x");
        if (makeFolderWithRawName(folder, "f\xe9"))
            writeFileWithRawName(folder, "f\xe9/file", "x");
    }) << QString() << true;
    const Fill links = [](const QString &folder) {
        writeFile(folder + u"/real/file"_s, "x");
        makeLink(u"real"_s, folder + u"/link to a folder"_s);
        makeLink(u"real/file"_s, folder + u"/link to a file"_s);
        makeLink(u"missing"_s, folder + u"/link to nothing"_s);
        makeLink(u".."_s, folder + u"/real/link to its parent"_s);
        makePipe(folder + u"/pipe"_s);
        makeSocket(folder + u"/socket"_s);
    };
    QTest::newRow("links, a pipe and a socket") << links << QString() << true;
    // Elsewhere there may be no links.
#ifdef Q_OS_UNIX
    QTest::newRow("a link to a folder, asked for") << links << u"/link to a folder"_s << true;
#endif
    QTest::newRow("a folder nobody may read") << Fill([](const QString &folder) {
        writeFile(folder + u"/closed/file"_s, "x");
        writeFile(folder + u"/open/file"_s, "x");
        letNobodyIn(folder + u"/closed"_s);
    }) << QString() << true;
}

void tst_folderWalk::yieldsWhatQtYields()
{
    QFETCH(const std::function<void(const QString &folder)>, fill);
    QFETCH(const QString, walked);
    QFETCH(const bool, hasFiles);
    const HostileTree folder;
    fill(folder.path());
    letEverybodyIn(folder.path());
    const OrdinaryUser user;

    const QString path = folder.path() + walked;
    const QStringList expected = filesByQt(path);
    QCOMPARE(!expected.isEmpty(), hasFiles);
    QCOMPARE(filesReadAhead({path}), expected);
    QCOMPARE(countFiles({path}, [] { return false; }), expected.size());
}

void tst_folderWalk::walksTheFoldersInTheOrderGiven()
{
    const QTemporaryDir folder;
    const QString a = folder.filePath(u"a"_s);
    const QString b = folder.filePath(u"b"_s);
    writeRandomTree(a, 1);
    writeRandomTree(b, 2);
    const QStringList folders{b, a, folder.path(), b};
    const QStringList expected = filesByQt(b) + filesByQt(a) + filesByQt(folder.path()) + filesByQt(b);
    QCOMPARE(filesReadAhead(folders), expected);
    QCOMPARE(countFiles(folders, [] { return false; }), expected.size());
    QCOMPARE(filesReadAhead({}), QStringList());
    QCOMPARE(countFiles({}, [] { return false; }), 0);
}

void tst_folderWalk::yieldsWhatOnlyOneFolderHolds()
{
    const QTemporaryDir folder;
    for (const QString &name : {u"a"_s, u"sub/b"_s, u".hidden/c"_s, u"other/sub/d"_s})
        writeFile(folder.filePath(name), "x");
    QStringList folders;
    QStringList files;
    for (FolderEntries entries(folder.path()); entries.next();)
        (entries.isFolder() ? folders : files).append(entries.path());
    folders.sort();
    QCOMPARE(folders, (QStringList{folder.filePath(u"other"_s), folder.filePath(u"sub"_s)}));
    QCOMPARE(files, QStringList{folder.filePath(u"a"_s)});
}

void tst_folderWalk::readsFarAheadInOrder_data()
{
    QTest::addColumn<int>("folders");
    QTest::addColumn<int>("filesEach");
    QTest::addColumn<int>("levels");

    // More than a portion in one place, and more altogether than is read ahead.
    QTest::newRow("one crowded folder") << 1 << 1500 << 0;
    QTest::newRow("a crowd of folders") << 1500 << 1 << 0;
    QTest::newRow("more than is read ahead") << 20 << 300 << 0;
    QTest::newRow("one folder in another") << 1 << 1 << 300;
}

void tst_folderWalk::readsFarAheadInOrder()
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
    QCOMPARE(countFiles({root.path()}, [] { return false; }), expected.size());

    ReadAheadWalk walk({root.path()}, [] { return false; });
    // The readers get as far ahead as they may.
    QTest::qWait(100);
    for (const QString &path : expected)
        QCOMPARE(walk.next(), path);
    QCOMPARE(walk.next(), std::nullopt);
    QCOMPARE(walk.next(), std::nullopt);
}

void tst_folderWalk::readsWhatIsWantedHoweverMuchIsAhead()
{
    constexpr int tooMany = 5000;
    const QTemporaryDir root;
    for (const QString &name : {u"a"_s, u"b"_s})
        QVERIFY(QDir().mkpath(root.filePath(name)));
    FolderEntries order(root.path());
    QVERIFY(order.next());
    writeFile(order.path() + u"/sub/file"_s, "x");
    QVERIFY(order.next());
    writeEmptyFiles(order.path(), tooMany, u"x"_s);

    // The first folder is held up, after two questions for the root, until the second one has been read.
    std::atomic<int> asked = 0;
    QSemaphore muchIsAhead;
    ReadAheadWalk walk({root.path()}, [&, taker = QThread::currentThread()] {
        const int question = QThread::currentThread() == taker ? 0 : ++asked;
        if (question == 3)
            muchIsAhead.tryAcquire(1, 5000);
        if (question == 3 + tooMany)
            muchIsAhead.release();
        return false;
    });
    for (const QString &path : filesByQt(root.path()))
        QCOMPARE(walk.next(), path);
    QCOMPARE(walk.next(), std::nullopt);
}

void tst_folderWalk::endsWithFoldersLeftUnread()
{
    const QTemporaryDir root;
    writeRandomTree(root.path(), 1);
    for (int taken = 0; taken < 50; ++taken) {
        ReadAheadWalk walk({root.path()}, [] { return false; });
        for (int i = 0; i < taken; ++i)
            QVERIFY(walk.next());
    }
}

void tst_folderWalk::endsFarAboveTheDeepestFolder()
{
    const HostileTree root;
    constexpr int levels = 1900;
    if (!writeDeepFile(root.path(), levels, "d", "file", "x"))
        QSKIP("No path is as long here");
    std::atomic<int> asked = 0;
    const std::unique_ptr<QThread> thread(QThread::create([&root, &asked] {
        const ReadAheadWalk walk({root.path()}, [&asked] {
            ++asked;
            return false;
        });
        while (asked < levels)
            QThread::yieldCurrentThread();
    }));
    // Enough for a walk, not for a call in each folder.
    thread->setStackSize(256 * 1024);
    thread->start();
    QVERIFY(thread->wait());
}

QTEST_GUILESS_MAIN(tst_folderWalk)
#include "tst_folderWalk.moc"
