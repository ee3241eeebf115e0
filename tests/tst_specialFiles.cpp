#include "tests/support/CollectedFiles.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"
#include "tests/support/UnprivilegedUser.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// How a scan treats entries other than readable files: links, pipes, hidden and unreadable entries.
class tst_specialFiles : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void neverEntersHiddenFolders();
    void entersAHiddenFolderThatIsListed();
    void neverFollowsLinks_data();
    void neverFollowsLinks();
    void walksAListedLinkUnderItsOwnName();
    void neverListsPipesAndSockets();
    void skipsAnUnreadableFolder();
    void skipsNamesThatAreNotText();

private:
    [[nodiscard]] QString path(const QString &name) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_specialFiles::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    writeFile(path(QStringLiteral("tree/plain.jpg")), "plain");
}

QString tst_specialFiles::path(const QString &name) const
{
    return m_folder->filePath(name);
}

void tst_specialFiles::neverEntersHiddenFolders()
{
    const QString hidden = path(QStringLiteral("tree/.hidden.jpg"));
    writeFile(hidden, "hidden");
    writeFile(path(QStringLiteral("tree/.folder/1.jpg")), "below hidden");
    writeFile(path(QStringLiteral("tree/.folder/sub/2.jpg")), "further below hidden");
    if (!QFileInfo(hidden).isHidden())
        QSKIP("A dot hides nothing here");
    QCOMPARE(collect({path(QStringLiteral("tree"))}), QStringList{path(QStringLiteral("tree/plain.jpg"))});
}

void tst_specialFiles::entersAHiddenFolderThatIsListed()
{
    const QString inside = path(QStringLiteral(".folder/1.jpg"));
    writeFile(inside, "inside");
    QCOMPARE(collect({path(QStringLiteral(".folder"))}), QStringList{inside});
    // The rule checks whether the file itself is hidden, not its folder.
    ScanOptions options = everyType();
    options.skipHiddenFolders = true;
    QCOMPARE(collect({path(QStringLiteral(".folder"))}, options), QStringList{inside});
}

void tst_specialFiles::neverFollowsLinks_data()
{
    QTest::addColumn<QString>("target");

    QTest::newRow("to a file beside it") << QStringLiteral("plain.jpg");
    QTest::newRow("to a file elsewhere") << QStringLiteral("../outside/far.jpg");
    QTest::newRow("to a folder elsewhere") << QStringLiteral("../outside");
    QTest::newRow("to its folder") << QStringLiteral(".");
    QTest::newRow("to the folder above") << QStringLiteral("..");
    QTest::newRow("to itself") << QStringLiteral("link.jpg");
    QTest::newRow("to nothing") << QStringLiteral("nothing.jpg");
}

void tst_specialFiles::neverFollowsLinks()
{
    QFETCH(const QString, target);
    writeFile(path(QStringLiteral("outside/far.jpg")), "far");
    if (!makeLink(target, path(QStringLiteral("tree/link.jpg"))))
        QSKIP("There are no symbolic links here");
    QCOMPARE(collect({path(QStringLiteral("tree"))}), QStringList{path(QStringLiteral("tree/plain.jpg"))});
}

void tst_specialFiles::walksAListedLinkUnderItsOwnName()
{
    if (!makeLink(QStringLiteral("tree"), path(QStringLiteral("link"))))
        QSKIP("There are no symbolic links here");
    QCOMPARE(collect({path(QStringLiteral("link"))}), QStringList{path(QStringLiteral("link/plain.jpg"))});
}

void tst_specialFiles::neverListsPipesAndSockets()
{
    if (!makePipe(path(QStringLiteral("tree/pipe.jpg"))) ||
        !makeSocket(path(QStringLiteral("tree/socket.jpg"))))
        QSKIP("There are no pipes and sockets in folders here");
    QCOMPARE(collect({path(QStringLiteral("tree"))}), QStringList{path(QStringLiteral("tree/plain.jpg"))});
}

void tst_specialFiles::skipsAnUnreadableFolder()
{
    writeFile(path(QStringLiteral("tree/locked/secret.jpg")), "secret");
    writeFile(path(QStringLiteral("tree/open/1.jpg")), "open");
    allowAccess(m_folder->path());
    const QString locked = path(QStringLiteral("tree/locked"));
    denyAccess(locked);

    QStringList collected;
    QStringList collectedFromLocked;
    bool keptOut = false;
    {
        const UnprivilegedUser user;
        keptOut = QDir(locked).isEmpty(QDir::Files);
        collected = collect({locked, path(QStringLiteral("tree"))});
        collectedFromLocked = collect({locked});
    }
    allowAccess(locked);
    if (!keptOut)
        QSKIP("Permissions keep nobody out here");
    QCOMPARE(collectedFromLocked, QStringList());
    QCOMPARE(sorted(collected),
        (QStringList{path(QStringLiteral("tree/open/1.jpg")), path(QStringLiteral("tree/plain.jpg"))}));
}

/// A name that cannot be decoded has no path: the file is left out, and its neighbours are not affected.
void tst_specialFiles::skipsNamesThatAreNotText()
{
    const QString tree = path(QStringLiteral("tree"));
    const QString neighbour = path(QStringLiteral("tree/broken \uFFFD.jpg"));
    const QByteArray name = "broken \xFF.jpg";
    writeFile(neighbour, "neighbour");
    if (!writeFileWithRawName(tree, name, "broken"))
        QSKIP("All names are text here");
    const QStringList collected = collect({tree});
    QVERIFY(removeFileWithRawName(tree, name));
    QCOMPARE(sorted(collected), (QStringList{neighbour, path(QStringLiteral("tree/plain.jpg"))}));
}

QTEST_GUILESS_MAIN(tst_specialFiles)
#include "tst_specialFiles.moc"
