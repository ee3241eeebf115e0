#include "tests/support/CollectedFiles.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"
#include "tests/support/UnprivilegedUser.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using Qt::StringLiterals::operator""_s;

/// How a scan treats entries other than readable files: links, pipes, hidden and unreadable entries.
class tst_specialFiles : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void neverEntersHiddenFolders();
    void entersAListedHiddenFolder();
    void neverFollowsLinks_data();
    void neverFollowsLinks();
    void walksAListedLinkByItsOwnPath();
    void neverListsPipesAndSockets();
    void skipsAnUnreadableFolder();
    void skipsUndecodableNames();

private:
    [[nodiscard]] QString path(const QString &name) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_specialFiles::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    writeFile(path(u"tree/plain.jpg"_s), "plain");
}

QString tst_specialFiles::path(const QString &name) const
{
    return m_folder->filePath(name);
}

void tst_specialFiles::neverEntersHiddenFolders()
{
    const QString hidden = path(u"tree/.hidden.jpg"_s);
    writeFile(hidden, "hidden");
    writeFile(path(u"tree/.folder/1.jpg"_s), "below hidden");
    writeFile(path(u"tree/.folder/sub/2.jpg"_s), "further below hidden");
    if (!QFileInfo(hidden).isHidden())
        QSKIP("A leading dot does not hide a file here");
    QCOMPARE(collect({path(u"tree"_s)}), QStringList{path(u"tree/plain.jpg"_s)});
}

void tst_specialFiles::entersAListedHiddenFolder()
{
    const QString inside = path(u".folder/1.jpg"_s);
    writeFile(inside, "inside");
    QCOMPARE(collect({path(u".folder"_s)}), QStringList{inside});
    // The rule checks whether the file itself is hidden, not its folder.
    ScanOptions options = everyType();
    options.skipHiddenFolders = true;
    QCOMPARE(collect({path(u".folder"_s)}, options), QStringList{inside});
}

void tst_specialFiles::neverFollowsLinks_data()
{
    QTest::addColumn<QString>("target");

    QTest::newRow("to a file beside it") << u"plain.jpg"_s;
    QTest::newRow("to a file elsewhere") << u"../outside/far.jpg"_s;
    QTest::newRow("to a folder elsewhere") << u"../outside"_s;
    QTest::newRow("to its folder") << u"."_s;
    QTest::newRow("to the folder above") << u".."_s;
    QTest::newRow("to itself") << u"link.jpg"_s;
    QTest::newRow("to nothing") << u"nothing.jpg"_s;
}

void tst_specialFiles::neverFollowsLinks()
{
    QFETCH(const QString, target);
    writeFile(path(u"outside/far.jpg"_s), "far");
    if (!makeLink(target, path(u"tree/link.jpg"_s)))
        QSKIP("There are no symbolic links here");
    QCOMPARE(collect({path(u"tree"_s)}), QStringList{path(u"tree/plain.jpg"_s)});
}

void tst_specialFiles::walksAListedLinkByItsOwnPath()
{
    if (!makeLink(u"tree"_s, path(u"link"_s)))
        QSKIP("There are no symbolic links here");
    QCOMPARE(collect({path(u"link"_s)}), QStringList{path(u"link/plain.jpg"_s)});
}

void tst_specialFiles::neverListsPipesAndSockets()
{
    if (!makePipe(path(u"tree/pipe.jpg"_s)) || !makeSocket(path(u"tree/socket.jpg"_s)))
        QSKIP("There are no pipes and sockets here");
    QCOMPARE(collect({path(u"tree"_s)}), QStringList{path(u"tree/plain.jpg"_s)});
}

void tst_specialFiles::skipsAnUnreadableFolder()
{
    writeFile(path(u"tree/locked/secret.jpg"_s), "secret");
    writeFile(path(u"tree/open/1.jpg"_s), "open");
    allowAccess(m_folder->path());
    const QString locked = path(u"tree/locked"_s);
    denyAccess(locked);

    QStringList collected;
    QStringList collectedFromLocked;
    bool isDenied = false;
    {
        const UnprivilegedUser user;
        isDenied = QDir(locked).isEmpty(QDir::Files);
        collected = collect({locked, path(u"tree"_s)});
        collectedFromLocked = collect({locked});
    }
    allowAccess(locked);
    if (!isDenied)
        QSKIP("Permissions have no effect here");
    QCOMPARE(collectedFromLocked, QStringList());
    QCOMPARE(sorted(collected), (QStringList{path(u"tree/open/1.jpg"_s), path(u"tree/plain.jpg"_s)}));
}

/// A name that cannot be decoded has no path: the file is left out, and its neighbours are not affected.
void tst_specialFiles::skipsUndecodableNames()
{
    const QString tree = path(u"tree"_s);
    const QString neighbour = path(u"tree/broken \uFFFD.jpg"_s);
    const QByteArray name = "broken \xFF.jpg";
    writeFile(neighbour, "neighbour");
    if (!writeFileWithRawName(tree, name, "broken"))
        QSKIP("Names must be valid text here");

    const QStringList collected = collect({tree});
    QVERIFY(removeFileWithRawName(tree, name));
    QCOMPARE(sorted(collected), (QStringList{neighbour, path(u"tree/plain.jpg"_s)}));
}

QTEST_GUILESS_MAIN(tst_specialFiles)
#include "tst_specialFiles.moc"
