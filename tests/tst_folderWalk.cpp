#include "scan/FileCount.h"
#include "scan/FileNames.h"
#include "scan/FolderEntries.h"
#include "scan/FolderWalk.h"
#include "tests/support/HostileTree.h"
#include "tests/support/QtWalk.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"
#include "tests/support/UnprivilegedUser.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using Qt::StringLiterals::operator""_s;

namespace {

/// Writes a tree into a folder.
using Fill = std::function<void(const QString &folder)>;

bool neverAbandoned()
{
    return false;
}

QStringList filesOfWalk(const QStringList &folders)
{
    QStringList files;
    FolderWalk walk(folders, neverAbandoned);
    while (const std::optional<QString> file = walk.next())
        files.append(*file);
    return files;
}

/// Writes files, folders and empty folders below \a folder. Equal seeds give equal trees.
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

void writeSmallTree(const QString &folder)
{
    for (const QString &name : {u"a"_s, u"sub/b"_s, u"sub/sub/c"_s, u".hidden/d"_s, u"sub/.e"_s})
        writeFile(folder + u'/' + name, "x");
}

/// Leaves out the names that the file system rejects.
void writeOddNames(const QString &folder)
{
    for (const HostileName &name : hostileNames()) {
#ifdef Q_OS_WIN
        // Wine creates names that Windows would change.
        if (!keepsItsNameOnWindows(name.name))
            continue;
#endif
        const QString subfolder = folder + u"/folders/"_s + name.name;
        if (QDir().mkpath(subfolder))
            QFile(subfolder + u"/file"_s).open(QIODevice::WriteOnly);
        QDir().mkpath(folder + u"/files"_s);
        QFile(folder + u"/files/"_s + name.name).open(QIODevice::WriteOnly);
    }
}

void writeUndecodableNames(const QString &folder)
{
    writeFile(folder + u"/é"_s, "x");
    writeFileWithRawName(folder, "\xff", "x");
    if (makeFolderWithRawName(folder, "f\xe9"))
        writeFileWithRawName(folder, "f\xe9/file", "x");
}

void writeLinksAndSpecialFiles(const QString &folder)
{
    writeFile(folder + u"/real/file"_s, "x");
    makeLink(u"real"_s, folder + u"/link to a folder"_s);
    makeLink(u"real/file"_s, folder + u"/link to a file"_s);
    makeLink(u"missing"_s, folder + u"/link to nothing"_s);
    makeLink(u".."_s, folder + u"/real/link to its parent"_s);
    makePipe(folder + u"/pipe"_s);
    makeSocket(folder + u"/socket"_s);
}

/// On Windows, QDirIterator treats shortcuts as links.
void writeShortcuts(const QString &folder)
{
    for (const QString &name : {u"a.lnk"_s, u"a.LNK"_s, u"b"_s, u"folder.lnk/c"_s})
        writeFile(folder + u'/' + name, "x");
}

void writeUnreadableFolder(const QString &folder)
{
    writeFile(folder + u"/closed/file"_s, "x");
    writeFile(folder + u"/open/file"_s, "x");
    denyAccess(folder + u"/closed"_s);
}

} // namespace

/// A walk yields the same files as QDirIterator, in the same order.
class tst_folderWalk : public QObject
{
    Q_OBJECT

private slots:
    void matchesQDirIterator_data();
    void matchesQDirIterator();
    void walksTheFoldersInTheGivenOrder();
    void listsTheEntriesOfOneFolder();
};

void tst_folderWalk::matchesQDirIterator_data()
{
    QTest::addColumn<Fill>("fill");
    // Appended to the folder's path.
    QTest::addColumn<QString>("appended");
    QTest::addColumn<bool>("hasFiles");
    const auto row = [](const char *name, const Fill &fill, const QString &appended, bool hasFiles) {
        QTest::newRow(name) << fill << appended << hasFiles;
    };

    const Fill nothing = [](const QString &) {};
    for (quint32 seed = 1; seed <= 5; ++seed) {
        QTest::addRow("random tree %u", seed)
            << Fill([seed](const QString &folder) { writeRandomTree(folder, seed); }) << QString() << true;
    }
    row("small tree", writeSmallTree, {}, true);
    row("path with a slash at its end", writeSmallTree, u"/"_s, true);
    row("path with two slashes", writeSmallTree, u"//sub"_s, true);
    row("path with dots", writeSmallTree, u"/sub/../sub/."_s, true);
    row("a given hidden folder", writeSmallTree, u"/.hidden"_s, true);
    row("a file", writeSmallTree, u"/a"_s, false);
    row("empty folder", nothing, {}, false);
    row("no such folder", nothing, u"/missing"_s, false);
    row("odd names", writeOddNames, {}, true);
    row("names that are not valid text", writeUndecodableNames, {}, true);
    row("links, a pipe and a socket", writeLinksAndSpecialFiles, {}, true);
    row("shortcuts of Windows", writeShortcuts, {}, true);
    // Other systems may not allow links.
#ifdef Q_OS_UNIX
    row("a given link to a folder", writeLinksAndSpecialFiles, u"/link to a folder"_s, true);
#endif
    row("an unreadable folder", writeUnreadableFolder, {}, true);
}

void tst_folderWalk::matchesQDirIterator()
{
    QFETCH(const Fill, fill);
    QFETCH(const QString, appended);
    QFETCH(const bool, hasFiles);
    const HostileTree folder;
    fill(folder.path());
    allowAccess(folder.path());
    const UnprivilegedUser user;

    const QString path = folder.path() + appended;
    const QStringList expected = filesByQt(path);
    QCOMPARE(!expected.isEmpty(), hasFiles);
    QCOMPARE(filesOfWalk({path}), expected);
    QCOMPARE(countFiles({path}, neverAbandoned), expected.size());
}

void tst_folderWalk::walksTheFoldersInTheGivenOrder()
{
    const QTemporaryDir folder;
    const QString a = folder.filePath(u"a"_s);
    const QString b = folder.filePath(u"b"_s);
    writeRandomTree(a, 1);
    writeRandomTree(b, 2);
    const QStringList folders{b, a, folder.path(), b};
    const QStringList expected = filesByQt(b) + filesByQt(a) + filesByQt(folder.path()) + filesByQt(b);
    QCOMPARE(filesOfWalk(folders), expected);
    QCOMPARE(countFiles(folders, neverAbandoned), expected.size());
    QCOMPARE(filesOfWalk({}), QStringList());
    QCOMPARE(countFiles({}, neverAbandoned), 0);
}

void tst_folderWalk::listsTheEntriesOfOneFolder()
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

QTEST_GUILESS_MAIN(tst_folderWalk)
#include "tst_folderWalk.moc"
