#include "scan/FileNames.h"
#include "tests/support/CollectedFiles.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// Which files of a tree are collected, and in what order.
class tst_fileCollection : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void collectsTheWholeTree();
    void collectsDeepFolders();
    void walksTheFoldersInTheirOrder();
    void walksAFolderListedTwiceTwice();
    void walksAFolderInsideAnotherTwice();
    void collectsNothingFromNoFolder();
    void collectsNothingFromAVanishedFolder();
    void toleratesFilesThatVanishDuringTheScan();
    void collectsTheSelectedTypesOnly_data();
    void collectsTheSelectedTypesOnly();
    void ignoresTheSizes();
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

void tst_fileCollection::collectsTheWholeTree()
{
    const QStringList names{QStringLiteral("a.jpg"), QStringLiteral("README"), QStringLiteral("x.tar.gz"),
        QStringLiteral("sub/b.mp3"), QStringLiteral("sub/deep er/c.PDF"), QStringLiteral("sub.jpg/d"),
        QStringLiteral("other/e.unknown")};
    write(names);
    writeFile(path(QStringLiteral("empty.txt")), {});
    QVERIFY(QDir().mkpath(path(QStringLiteral("folder without files.jpg/sub"))));

    QCOMPARE(sorted(collect({m_folder->path()})), paths(names + QStringList{QStringLiteral("empty.txt")}));
}

void tst_fileCollection::collectsDeepFolders()
{
    constexpr int depth = 200;
    const QString name = QString(QStringLiteral("d/")).repeated(depth) + QStringLiteral("x.jpg");
    write({name});
    QCOMPARE(collect({m_folder->path()}), QStringList{path(name)});
}

void tst_fileCollection::walksTheFoldersInTheirOrder()
{
    write({QStringLiteral("b/1.jpg"), QStringLiteral("a/2.jpg"), QStringLiteral("c/3.jpg")});
    QCOMPARE(collect({path(QStringLiteral("b")), path(QStringLiteral("c")), path(QStringLiteral("a"))}),
        (QStringList{path(QStringLiteral("b/1.jpg")), path(QStringLiteral("c/3.jpg")),
            path(QStringLiteral("a/2.jpg"))}));
}

void tst_fileCollection::walksAFolderListedTwiceTwice()
{
    write({QStringLiteral("1.jpg"), QStringLiteral("2.jpg"), QStringLiteral("sub/3.jpg")});
    const QStringList once = collect({m_folder->path()});
    QCOMPARE(once.size(), 3);
    QCOMPARE(collect({m_folder->path(), m_folder->path()}), once + once);
}

void tst_fileCollection::walksAFolderInsideAnotherTwice()
{
    write({QStringLiteral("1.jpg"), QStringLiteral("sub/2.jpg"), QStringLiteral("sub/3.jpg")});
    const QString sub = path(QStringLiteral("sub"));
    const QStringList outer = collect({m_folder->path()});
    const QStringList inner = collect({sub});
    QCOMPARE(sorted(inner), paths({QStringLiteral("sub/2.jpg"), QStringLiteral("sub/3.jpg")}));
    QCOMPARE(collect({m_folder->path(), sub}), outer + inner);
    QCOMPARE(collect({sub, m_folder->path()}), inner + outer);
}

void tst_fileCollection::collectsNothingFromNoFolder()
{
    write({QStringLiteral("1.jpg")});
    const QString before = QDir::currentPath();
    // An empty list must not mean the current folder.
    QVERIFY(QDir::setCurrent(m_folder->path()));
    const QStringList collected = collect({});
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(collected, QStringList());
    QCOMPARE(scannedFileCount.load(), 0);
    QCOMPARE(acceptedFileCount.load(), 0);
}

void tst_fileCollection::collectsNothingFromAVanishedFolder()
{
    write({QStringLiteral("a/1.jpg"), QStringLiteral("file.jpg")});
    const QString there = path(QStringLiteral("a"));
    const QString gone = path(QStringLiteral("gone"));
    const QString file = path(QStringLiteral("file.jpg"));
    QCOMPARE(collect({gone, there, file}), QStringList{path(QStringLiteral("a/1.jpg"))});
}

void tst_fileCollection::toleratesFilesThatVanishDuringTheScan()
{
    write({QStringLiteral("a/1.jpg"), QStringLiteral("b/2.jpg"), QStringLiteral("c/3.jpg"),
        QStringLiteral("c/4.jpg")});
    CollectionCallbacks callbacks = silentCallbacks();
    callbacks.counted = [this] {
        QVERIFY(QDir(path(QStringLiteral("b"))).removeRecursively());
        QVERIFY(QFile::remove(path(QStringLiteral("c/3.jpg"))));
    };
    const QStringList folders{
        path(QStringLiteral("a")), path(QStringLiteral("b")), path(QStringLiteral("c"))};
    QCOMPARE(collectFiles(folders, everyType(), callbacks),
        (QStringList{path(QStringLiteral("a/1.jpg")), path(QStringLiteral("c/4.jpg"))}));
}

void tst_fileCollection::collectsTheSelectedTypesOnly_data()
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

void tst_fileCollection::collectsTheSelectedTypesOnly()
{
    QFETCH(const QStringList, types);
    QFETCH(const QStringList, names);
    write({QStringLiteral("photo.JPG"), QStringLiteral("photo.heic"), QStringLiteral("archive.ZIP"),
        QStringLiteral("song.mp3"), QStringLiteral("clip.flv"), QStringLiteral("sub.jpg/letter.txt"),
        QStringLiteral("README"), QStringLiteral("x.tar.gz")});
    ScanOptions options = everyType();
    options.fileTypes = types;
    QCOMPARE(sorted(collect({m_folder->path()}, options)), paths(names));
    QCOMPARE(scannedFileCount.load(), 8);
    QCOMPARE(acceptedFileCount.load(), names.size());
}

void tst_fileCollection::ignoresTheSizes()
{
    write({QStringLiteral("small.jpg")});
    writeFile(path(QStringLiteral("big.jpg")), QByteArray(3000, 'x'));
    ScanOptions options = everyType();
    options.minSize = 500;
    options.minUnit = QStringLiteral("MB");
    options.maxSize = 1;
    options.maxUnit = QStringLiteral("KB");
    QCOMPARE(sorted(collect({m_folder->path()}, options)),
        paths({QStringLiteral("big.jpg"), QStringLiteral("small.jpg")}));
}

void tst_fileCollection::collectsUnusualNames_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("newline") << QStringLiteral("two\nlines.jpg");
    QTest::newRow("quotes") << QStringLiteral("a \"b\" 'c' `d`.jpg");
    QTest::newRow("blanks at both ends") << QStringLiteral("  x.jpg  ");
    QTest::newRow("only a blank") << QStringLiteral(" ");
    QTest::newRow("backslash") << QStringLiteral("a\\b.jpg");
    QTest::newRow("placeholders") << QStringLiteral("%1 %2 %n.jpg");
    QTest::newRow("wildcards") << QStringLiteral("*?[a-z].jpg");
    QTest::newRow("markup") << QStringLiteral("<b>x<b>&amp;.jpg");
    QTest::newRow("emoji") << QStringLiteral("\U0001F600.jpg");
    QTest::newRow("right to left") << QStringLiteral("שלום.jpg");
    QTest::newRow("direction override") << QStringLiteral("a\u202Egpj.exe");
    QTest::newRow("combining accent") << QStringLiteral("e\u0301.jpg");
    QTest::newRow("composed accent") << QStringLiteral("\u00E9.jpg");
    QTest::newRow("255 bytes") << QString(251, u'x') + QStringLiteral(".jpg");
}

/// Opens the collected path and reads it: the path of a similarly named file does not pass.
void tst_fileCollection::collectsUnusualNames()
{
    QFETCH(const QString, name);
    QVERIFY(QDir().mkpath(path(QStringLiteral("sub"))));
    QFile file(path(QStringLiteral("sub/")) + name);
    if (!file.open(QIODevice::WriteOnly))
        QSKIP("Files cannot have this name here");
    file.write("the one");
    file.close();
    if (!QDir(path(QStringLiteral("sub"))).exists(name))
        QSKIP("Files cannot have this name here");
#ifdef Q_OS_WIN
    if (!QDir(path(QStringLiteral("sub"))).entryList(QDir::Files).contains(name))
        QSKIP("Windows has given the file another name");
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
