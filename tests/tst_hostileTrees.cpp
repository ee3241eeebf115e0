#include "tests/support/CollectedFiles.h"
#include "tests/support/HostileTree.h"
#include "tests/support/OpenWatch.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"
#include "tests/support/UnprivilegedUser.h"
#include "tests/support/WindowDriver.h"

#include <QDir>
#include <QTest>

#include <algorithm>
#include <memory>

using Qt::StringLiterals::operator""_s;

/// Trees with unusual entries: the window finds the copies, and Delete removes the marked files and nothing
/// else.
class tst_hostileTrees : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void deletesFilesWithOddNames_data();
    void deletesFilesWithOddNames();
    void skipsUndecodableNames();
    void reachesDeepFolders_data();
    void reachesDeepFolders();
    void keepsLinksAndTheirTargets();
    void deletesOneOfTwoHardLinks();
    void neverOpensPipesSocketsAndDevices();
    void skipsFilesThatCannotBeRead();
    void comparesBothEndsOfSparseFiles();

private:
    [[nodiscard]] QString path(const QString &name = {}) const;
    void checkDeletion(WindowDriver &driver);

    std::unique_ptr<HostileTree> m_tree;
};

void tst_hostileTrees::init()
{
    m_tree = std::make_unique<HostileTree>();
}

QString tst_hostileTrees::path(const QString &name) const
{
    return m_tree->path(name);
}

/// Presses Delete and checks that all marked files are gone and that nothing else has changed.
void tst_hostileTrees::checkDeletion(WindowDriver &driver)
{
    QList<QByteArray> marked;
    for (const QString &each : driver.checkedPaths())
        marked.append(m_tree->rawName(each));
    std::ranges::sort(marked);
    DiskState expected = m_tree->state();

    const QList<ShownBox> boxes = driver.clickAndCloseBoxes("btnRemoveSelected");
    QCOMPARE(boxes.value(0), deletionBox(static_cast<int>(marked.size()), 0));
    const DiskState left = m_tree->state();
    QCOMPARE(goneFrom(expected, left), marked);
    for (const QByteArray &each : std::as_const(marked))
        expected.remove(each);
    QVERIFY(left == expected);
}

void tst_hostileTrees::deletesFilesWithOddNames_data()
{
    QTest::addColumn<QString>("name");
    for (const HostileName &each : hostileNames())
        QTest::newRow(each.description) << each.name;
}

/// All names are in the tree at the same time, so the test notices if one is mistaken for another.
void tst_hostileTrees::deletesFilesWithOddNames()
{
#ifdef Q_OS_WIN
    QSKIP("Windows allows few of these names");
#endif
    QFETCH(const QString, name);
    for (const HostileName &each : hostileNames())
        writeFile(path(u"neighbours/"_s + each.name), each.description);
    const QString copy = path(u"copies \"of\"\n%1 /"_s + name);
    writeFile(copy, QTest::currentDataTag());

    WindowDriver driver;
    driver.setFolders({path()});
    QVERIFY(driver.scan());
    QCOMPARE(sorted(driver.filePaths()), sorted({copy, path(u"neighbours/"_s + name)}));
    QCOMPARE(driver.groupTitles().size(), 1);
    QVERIFY(driver.groupTitles().constFirst().startsWith(name + u"    "_s));
    QCOMPARE(driver.checkedPaths().size(), 1);
    checkDeletion(driver);
}

/// Decoded, such a name contains replacement characters and equals the name of another entry.
void tst_hostileTrees::skipsUndecodableNames()
{
    const QList<QByteArray> names{
        "\xFF.txt", "caf\xE9.txt", "\xED\xA0\x80.txt", "\xC0\xAF.txt", "\xF0\x9F.txt"};
    for (const QByteArray &name : names) {
        if (!writeFileWithRawName(path(), name, "content"))
            QSKIP("Names must be valid text here");
        writeFile(path(QFile::decodeName(name)), "content");
    }
    QVERIFY(makeFolderWithRawName(path(), "\xFF"));
    QVERIFY(writeFileWithRawName(path(), "\xFF/inside.txt", "content"));
    QVERIFY(writeFileWithRawName(path(), "\xFF/only here.txt", "content"));
    writeFile(path(u"\uFFFD/inside.txt"_s), "content");

    QStringList expected{path(u"\uFFFD/inside.txt"_s)};
    for (const QByteArray &name : names) {
        if (const QString text = path(QFile::decodeName(name)); !expected.contains(text))
            expected.append(text);
    }
    QStringList collected = collect({path()});
    for (const QString &each : std::as_const(collected))
        QVERIFY2(expected.contains(each), qPrintable(each));
    collected.removeDuplicates();
    QCOMPARE(sorted(collected), sorted(expected));

    WindowDriver driver;
    driver.setFolders({path()});
    QVERIFY(driver.scan());
    QCOMPARE(driver.checkedPaths().size(), expected.size() - 1);
    checkDeletion(driver);
}

void tst_hostileTrees::reachesDeepFolders_data()
{
    QTest::addColumn<int>("levels");
    QTest::addColumn<QByteArray>("folderName");
    QTest::addColumn<bool>("reached");

    QTest::newRow("300 levels") << 300 << QByteArray("deep") << true;
    QTest::newRow("path too long") << 300 << QByteArray(40, 'd') << false;
}

void tst_hostileTrees::reachesDeepFolders()
{
    QFETCH(const int, levels);
    QFETCH(const QByteArray, folderName);
    QFETCH(const bool, reached);
    for (const char *tree : {"first", "second"}) {
        writeFile(path(QLatin1StringView(tree) + u"/shallow.txt"_s), "shallow");
        if (!writeDeepFile(path(QLatin1StringView(tree)), levels, folderName, "deep.txt", "deep"))
            QSKIP("Paths cannot be this long here");
    }

    WindowDriver driver;
    driver.setFolders({path()});
    QVERIFY(driver.scan());
    QCOMPARE(driver.groupTitles().size(), reached ? 2 : 1);
    QCOMPARE(driver.filePaths().filter(u"deep.txt"_s).size(), reached ? 2 : 0);
    QCOMPARE(driver.checkedPaths().size(), driver.groupTitles().size());
    checkDeletion(driver);
}

void tst_hostileTrees::keepsLinksAndTheirTargets()
{
    for (const char *name : {"tree/a.jpg", "tree/b.jpg", "outside/c.jpg"})
        writeFile(path(QLatin1StringView(name)), "the same");
    const QStringList targets{u"a.jpg"_s, u"../outside/c.jpg"_s, u"."_s, u".."_s, u"../outside"_s, u"4.jpg"_s,
        u"nothing"_s, u"7.jpg"_s, u"/"_s, u"/dev/zero"_s};
    for (qsizetype i = 0; i < targets.size(); ++i) {
        if (!makeLink(targets.at(i), path(u"tree/%1.jpg"_s.arg(i))))
            QSKIP("There are no symbolic links here");
    }

    WindowDriver driver;
    driver.setFolders({path(u"tree"_s)});
    QVERIFY(driver.scan());
    QCOMPARE(sorted(driver.filePaths()), (QStringList{path(u"tree/a.jpg"_s), path(u"tree/b.jpg"_s)}));
    driver.click("btnSelectAll");
    QCOMPARE(driver.checkedPaths().size(), 1);
    checkDeletion(driver);
}

void tst_hostileTrees::deletesOneOfTwoHardLinks()
{
    writeFile(path(u"name.txt"_s), "content");
    if (!makeHardLink(path(u"name.txt"_s), path(u"other name.txt"_s)))
        QSKIP("There are no hard links here");

    WindowDriver driver;
    driver.setFolders({path()});
    QVERIFY(driver.scan());
    QCOMPARE(driver.filePaths().size(), 2);
    QCOMPARE(driver.checkedPaths(), QStringList{driver.filePaths().constLast()});
    checkDeletion(driver);
    QCOMPARE(m_tree->state().size(), 1);
}

/// Opening a pipe blocks; opening a device can have side effects.
void tst_hostileTrees::neverOpensPipesSocketsAndDevices()
{
    if (!makePipe(path(u"pipe.jpg"_s)) || !makeSocket(path(u"socket.jpg"_s)))
        QSKIP("There are no pipes and sockets here");
    const bool hasDevice = makeDevice(path(u"device.jpg"_s));
    writeFile(path(u"empty.jpg"_s), "");
    writeFile(path(u"empty too.jpg"_s), "");
    OpenWatch watch({path()});
    if (!watch.isValid())
        QSKIP("Opened files are not reported here");

    WindowDriver driver;
    driver.setFolders({path()});
    QVERIFY(driver.scan());
    driver.click("btnPictures");
    driver.click("btnSelectAll");
    QTest::qWait(0);
    QCOMPARE(sorted(driver.filePaths()), (QStringList{path(u"empty too.jpg"_s), path(u"empty.jpg"_s)}));
    checkDeletion(driver);

    const QStringList opened = watch.opened();
    QVERIFY(opened.contains(u"empty.jpg"));
    for (const char *never : {"pipe.jpg", "socket.jpg", "device.jpg"})
        QVERIFY2(!opened.contains(QLatin1StringView(never)), never);
    if (!hasDevice)
        QSKIP("No device was tested: only root can create one");
}

void tst_hostileTrees::skipsFilesThatCannotBeRead()
{
    const QStringList names{u"1.txt"_s, u"2.txt"_s, u"locked.txt"_s, u"folder/inside.txt"_s};
    for (const QString &name : names)
        writeFile(path(name), "content");
    QFile::setPermissions(path(), QFile::Permissions(0x7777));
    denyAccess(path(u"locked.txt"_s));
    denyAccess(path(u"folder"_s));

    WindowDriver driver;
    driver.setFolders({path()});
    DiskState expected = m_tree->state();
    bool isDenied = false;
    QStringList shown;
    QStringList marked;
    QList<ShownBox> boxes;
    {
        const UnprivilegedUser user;
        isDenied = !QFile(path(u"locked.txt"_s)).open(QIODevice::ReadOnly);
        driver.scan();
        shown = driver.filePaths();
        marked = driver.checkedPaths();
        boxes = driver.clickAndCloseBoxes("btnRemoveSelected");
    }
    if (!isDenied)
        QSKIP("Permissions have no effect here");
    QCOMPARE(sorted(shown), (QStringList{path(u"1.txt"_s), path(u"2.txt"_s)}));
    QCOMPARE(marked.size(), 1);
    QCOMPARE(boxes.value(0).text, u"Deleted 1 files successfully, 0 files failed."_s);
    QCOMPARE(goneFrom(expected, m_tree->state()), QList<QByteArray>{m_tree->rawName(marked.constFirst())});
    QFile::setPermissions(path(u"folder"_s), QFile::Permissions(0x7000));
}

void tst_hostileTrees::comparesBothEndsOfSparseFiles()
{
    constexpr qint64 tebibyte = qint64(1) << 40;
    if (!writeSparseFile(path(u"1.mkv"_s), tebibyte, "same end") ||
        !writeSparseFile(path(u"2.mkv"_s), tebibyte, "same end") ||
        !writeSparseFile(path(u"other end.mkv"_s), tebibyte, "SAME end") ||
        !writeSparseFile(path(u"longer.mkv"_s), tebibyte + 1, "same end"))
        QSKIP("Files cannot be this large here");

    WindowDriver driver;
    driver.setFolders({path()});
    QVERIFY(driver.scan());
    QCOMPARE(sorted(driver.filePaths()), (QStringList{path(u"1.mkv"_s), path(u"2.mkv"_s)}));
    QVERIFY(driver.groupTitles().constFirst().endsWith(u"1048576.00 MB, 2 file(s)"));
    QCOMPARE(driver.labelText("labelStatsInfo"), u"Total 1 duplicates, 2 files, size 2048.00 GB"_s);
    QCOMPARE(driver.fileRow(path(u"2.mkv"_s))->text(1), u"1073741824 KB"_s);
    checkDeletion(driver);
}

QTEST_MAIN(tst_hostileTrees)
#include "tst_hostileTrees.moc"
