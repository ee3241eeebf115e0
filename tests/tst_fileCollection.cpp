#include "scan/FileNames.h"
#include "tests/support/CollectedFiles.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using Qt::StringLiterals::operator""_s;

/// Which files of a tree are collected, and in what order.
class tst_fileCollection : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void collectsEveryFileOfATree();
    void collectsDeepFolders();
    void walksTheFoldersInTheGivenOrder();
    void walksAFolderTwiceIfListedTwice();
    void walksAFolderInsideAnotherTwice();
    void collectsNothingWithoutFolders();
    void collectsNothingFromAMissingFolder();
    void toleratesFilesThatVanishDuringTheScan();
    void collectsOnlyTheSelectedTypes_data();
    void collectsOnlyTheSelectedTypes();
    void ignoresTheSizeLimits();
    void collectsUnusualNames_data();
    void collectsUnusualNames();

private:
    [[nodiscard]] QString path(const QString &name) const;
    [[nodiscard]] QStringList paths(const QStringList &names) const;
    void write(const QStringList &names) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_fileCollection::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

QString tst_fileCollection::path(const QString &name) const
{
    return m_folder->filePath(name);
}

QStringList tst_fileCollection::paths(const QStringList &names) const
{
    QStringList result;
    for (const QString &name : names)
        result.append(path(name));
    return sorted(result);
}

void tst_fileCollection::write(const QStringList &names) const
{
    for (const QString &name : names)
        writeFile(path(name), "content");
}

void tst_fileCollection::collectsEveryFileOfATree()
{
    const QStringList names{u"a.jpg"_s, u"README"_s, u"x.tar.gz"_s, u"sub/b.mp3"_s, u"sub/deep er/c.PDF"_s,
        u"sub.jpg/d"_s, u"other/e.unknown"_s};
    write(names);
    writeFile(path(u"empty.txt"_s), {});
    QVERIFY(QDir().mkpath(path(u"folder without files.jpg/sub"_s)));

    QCOMPARE(sorted(collect({m_folder->path()})), paths(names + QStringList{u"empty.txt"_s}));
}

void tst_fileCollection::collectsDeepFolders()
{
    constexpr int depth = 200;
    const QString name = QString(u"d/"_s).repeated(depth) + u"x.jpg"_s;
    write({name});
    QCOMPARE(collect({m_folder->path()}), QStringList{path(name)});
}

void tst_fileCollection::walksTheFoldersInTheGivenOrder()
{
    write({u"b/1.jpg"_s, u"a/2.jpg"_s, u"c/3.jpg"_s});
    QCOMPARE(collect({path(u"b"_s), path(u"c"_s), path(u"a"_s)}),
        (QStringList{path(u"b/1.jpg"_s), path(u"c/3.jpg"_s), path(u"a/2.jpg"_s)}));
}

void tst_fileCollection::walksAFolderTwiceIfListedTwice()
{
    write({u"1.jpg"_s, u"2.jpg"_s, u"sub/3.jpg"_s});
    const QStringList once = collect({m_folder->path()});
    QCOMPARE(once.size(), 3);
    QCOMPARE(collect({m_folder->path(), m_folder->path()}), once + once);
}

void tst_fileCollection::walksAFolderInsideAnotherTwice()
{
    write({u"1.jpg"_s, u"sub/2.jpg"_s, u"sub/3.jpg"_s});
    const QString sub = path(u"sub"_s);
    const QStringList outer = collect({m_folder->path()});
    const QStringList inner = collect({sub});
    QCOMPARE(sorted(inner), paths({u"sub/2.jpg"_s, u"sub/3.jpg"_s}));
    QCOMPARE(collect({m_folder->path(), sub}), outer + inner);
    QCOMPARE(collect({sub, m_folder->path()}), inner + outer);
}

void tst_fileCollection::collectsNothingWithoutFolders()
{
    write({u"1.jpg"_s});
    const QString before = QDir::currentPath();
    // An empty list must not mean the current folder.
    QVERIFY(QDir::setCurrent(m_folder->path()));

    const QStringList collected = collect({});
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(collected, QStringList());
    QCOMPARE(scannedFileCount.load(), 0);
    QCOMPARE(acceptedFileCount.load(), 0);
}

void tst_fileCollection::collectsNothingFromAMissingFolder()
{
    write({u"a/1.jpg"_s, u"file.jpg"_s});
    const QString there = path(u"a"_s);
    const QString gone = path(u"gone"_s);
    const QString file = path(u"file.jpg"_s);
    QCOMPARE(collect({gone, there, file}), QStringList{path(u"a/1.jpg"_s)});
}

void tst_fileCollection::toleratesFilesThatVanishDuringTheScan()
{
    write({u"a/1.jpg"_s, u"b/2.jpg"_s, u"c/3.jpg"_s, u"c/4.jpg"_s});
    CollectionCallbacks callbacks = silentCallbacks();
    callbacks.counted = [this] {
        QVERIFY(QDir(path(u"b"_s)).removeRecursively());
        QVERIFY(QFile::remove(path(u"c/3.jpg"_s)));
    };
    const QStringList folders{path(u"a"_s), path(u"b"_s), path(u"c"_s)};
    QCOMPARE(
        collectFiles(folders, everyType(), callbacks), (QStringList{path(u"a/1.jpg"_s), path(u"c/4.jpg"_s)}));
}

void tst_fileCollection::collectsOnlyTheSelectedTypes_data()
{
    QTest::addColumn<QStringList>("types");
    QTest::addColumn<QStringList>("names");

    const auto row = [](const char *types, const char *names) {
        QTest::newRow(*types ? types : "none") << QString::fromLatin1(types).split(u' ', Qt::SkipEmptyParts)
                                               << QString::fromLatin1(names).split(u' ', Qt::SkipEmptyParts);
    };
    row("picture", "photo.JPG photo.heic");
    row("archive", "archive.ZIP");
    row("audio video", "song.mp3 clip.flv");
    row("document", "sub.jpg/letter.txt");
    row("archive document audio video picture",
        "photo.JPG photo.heic archive.ZIP song.mp3 clip.flv sub.jpg/letter.txt");
    row("other", "photo.JPG photo.heic archive.ZIP song.mp3 clip.flv sub.jpg/letter.txt README x.tar.gz");
    row("picture other",
        "photo.JPG photo.heic archive.ZIP song.mp3 clip.flv sub.jpg/letter.txt README x.tar.gz");
    row("", "");
    row("pictures", "");
}

void tst_fileCollection::collectsOnlyTheSelectedTypes()
{
    QFETCH(const QStringList, types);
    QFETCH(const QStringList, names);
    write({u"photo.JPG"_s, u"photo.heic"_s, u"archive.ZIP"_s, u"song.mp3"_s, u"clip.flv"_s,
        u"sub.jpg/letter.txt"_s, u"README"_s, u"x.tar.gz"_s});
    ScanOptions options = everyType();
    options.fileTypes = types;
    QCOMPARE(sorted(collect({m_folder->path()}, options)), paths(names));
    QCOMPARE(scannedFileCount.load(), 8);
    QCOMPARE(acceptedFileCount.load(), names.size());
}

void tst_fileCollection::ignoresTheSizeLimits()
{
    write({u"small.jpg"_s});
    writeFile(path(u"big.jpg"_s), QByteArray(3000, 'x'));
    ScanOptions options = everyType();
    options.minSize = 500;
    options.minUnit = u"MB"_s;
    options.maxSize = 1;
    options.maxUnit = u"KB"_s;
    QCOMPARE(sorted(collect({m_folder->path()}, options)), paths({u"big.jpg"_s, u"small.jpg"_s}));
}

void tst_fileCollection::collectsUnusualNames_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("newline") << u"two\nlines.jpg"_s;
    QTest::newRow("quotes") << u"a \"b\" 'c' `d`.jpg"_s;
    QTest::newRow("spaces at both ends") << u"  x.jpg  "_s;
    QTest::newRow("only a space") << u" "_s;
    QTest::newRow("backslash") << u"a\\b.jpg"_s;
    QTest::newRow("placeholders") << u"%1 %2 %n.jpg"_s;
    QTest::newRow("wildcards") << u"*?[a-z].jpg"_s;
    QTest::newRow("markup") << u"<b>x<b>&amp;.jpg"_s;
    QTest::newRow("emoji") << u"\U0001F600.jpg"_s;
    QTest::newRow("right to left") << u"שלום.jpg"_s;
    QTest::newRow("direction override") << u"a\u202Egpj.exe"_s;
    QTest::newRow("combining accent") << u"e\u0301.jpg"_s;
    QTest::newRow("composed accent") << u"\u00E9.jpg"_s;
    QTest::newRow("255 bytes") << QString(251, u'x') + u".jpg"_s;
}

/// Opens the collected path and reads it: the path of a similarly named file does not pass.
void tst_fileCollection::collectsUnusualNames()
{
    QFETCH(const QString, name);
    QVERIFY(QDir().mkpath(path(u"sub"_s)));
    QFile file(path(u"sub/"_s) + name);
    if (!file.open(QIODevice::WriteOnly))
        QSKIP("Files cannot have this name here");
    file.write("the one");
    file.close();
    if (!QDir(path(u"sub"_s)).exists(name))
        QSKIP("Files cannot have this name here");
#ifdef Q_OS_WIN
    if (!QDir(path(u"sub"_s)).entryList(QDir::Files).contains(name))
        QSKIP("Windows gave the file another name");
#endif

    const QStringList collected = collect({m_folder->path()});
#ifdef Q_OS_WIN
    // Wine creates files with names that Windows would change.
    if (!keepsItsNameOnWindows(name)) {
        QCOMPARE(collected, QStringList());
        return;
    }
#endif
    QCOMPARE(collected, QStringList{file.fileName()});
    QFile read(collected.first());
    QVERIFY(read.open(QIODevice::ReadOnly));
    QCOMPARE(read.readAll(), QByteArray("the one"));
}

QTEST_GUILESS_MAIN(tst_fileCollection)
#include "tst_fileCollection.moc"
