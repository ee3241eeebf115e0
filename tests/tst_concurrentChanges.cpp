#include "tests/support/AnalysisRecorder.h"
#include "tests/support/CollectedFiles.h"
#include "tests/support/HostileTree.h"
#include "tests/support/ImmutableFile.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"
#include "tests/support/UnprivilegedUser.h"
#include "tests/support/WindowDriver.h"

#include <QDir>
#include <QTest>

#include <functional>
#include <memory>

using Qt::StringLiterals::operator""_s;

namespace {

/// Puts something else in the place of a file; false when there is no such thing on this system.
using Change = std::function<bool(const QString &path)>;

bool replace(const QString &path, const Change &make)
{
    return QFile::remove(path) && make(path);
}

bool writeOver(const QString &path, const QByteArray &content)
{
    writeFile(path, content);
    return true;
}

const QByteArray pictureBytes = QByteArray(9000, 'p');

/// What happens to a file when Delete is pressed.
enum class Fate {
    Deleted,  ///< removed and counted as deleted
    Failed,   ///< unchanged and counted as failed
    Unmarked, ///< unchanged: it had no row and so was not marked
};

} // namespace

Q_DECLARE_METATYPE(Change)
Q_DECLARE_METATYPE(Fate)

/// Files that turn into something else while a scan, its reader or its deletion counts on them; and files
/// that cannot be deleted.
class tst_concurrentChanges : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void analysesTheRemainingFiles_data();
    void analysesTheRemainingFiles();
    void deletesAfterAChange_data();
    void deletesAfterAChange();
    void showsAChange_data();
    void showsAChange();
    void neverFollowsAFileThatBecameALink();
    void countsAFailureInAReadOnlyFolder();
    void deletesAReadOnlyFile();
    void countsAFailureForAnImmutableFile();
    void deletesOnAFullDisk();
    void countsAFailureOnAReadOnlyDisk();

private:
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_tree->path(name);
    }
    bool scanAndCheck(const QStringList &checked);
    static void addChanges(Fate (*fate)(Fate pressed, Fate seen));
    void checkDeletion(Fate fate);

    std::unique_ptr<HostileTree> m_tree;
    std::unique_ptr<WindowDriver> m_driver;
    QStringList m_copies;
};

void tst_concurrentChanges::init()
{
    m_driver = std::make_unique<WindowDriver>();
    m_tree = std::make_unique<HostileTree>();
    m_copies = {path(u"tree/1.jpg"_s), path(u"tree/2.jpg"_s), path(u"tree/3.jpg"_s)};
    for (const QString &copy : std::as_const(m_copies))
        writeFile(copy, pictureBytes);
    writeFile(path(u"outside/far.jpg"_s), "far away");
}

/// Every change with its fate when Delete is pressed \a pressed at once, or after the rows were \a seen
/// again.
void tst_concurrentChanges::addChanges(Fate (*fate)(Fate pressed, Fate seen))
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<Fate>("fate");
    QTest::addColumn<bool>("hasRow");

    const auto row = [&](const char *name, Fate pressed, Fate seen, const Change &change) {
        QTest::newRow(name) << change << fate(pressed, seen) << (seen != Fate::Unmarked);
    };
    row("vanishes", Fate::Failed, Fate::Unmarked, [](const QString &path) { return QFile::remove(path); });
    row("is emptied", Fate::Deleted, Fate::Deleted, [](const QString &path) { return writeOver(path, ""); });
    row("shrinks", Fate::Deleted, Fate::Deleted,
        [](const QString &path) { return writeOver(path, pictureBytes.left(5000)); });
    row("grows", Fate::Deleted, Fate::Deleted,
        [](const QString &path) { return writeOver(path, pictureBytes + "p"); });
    row("turns into a folder", Fate::Failed, Fate::Failed, [](const QString &path) {
        return replace(path, [](const QString &at) { return QDir().mkdir(at); });
    });
    row("turns into a full folder", Fate::Failed, Fate::Failed, [](const QString &path) {
        return replace(
            path, [](const QString &at) { return writeOver(at + u"/inside.jpg"_s, pictureBytes); });
    });
    row("turns into a pipe", Fate::Deleted, Fate::Deleted,
        [](const QString &path) { return replace(path, makePipe); });
    row("turns into a socket", Fate::Deleted, Fate::Deleted,
        [](const QString &path) { return replace(path, makeSocket); });
    row("turns into a device", Fate::Deleted, Fate::Deleted,
        [](const QString &path) { return replace(path, makeDevice); });
    row("turns into a link to itself", Fate::Deleted, Fate::Unmarked, [](const QString &path) {
        return replace(path, [](const QString &at) { return makeLink(QFileInfo(at).fileName(), at); });
    });
    row("turns into a link to another file", Fate::Deleted, Fate::Deleted, [](const QString &path) {
        return replace(path, [](const QString &at) { return makeLink(u"../outside/far.jpg"_s, at); });
    });
    row("turns into a link to a folder", Fate::Deleted, Fate::Deleted, [](const QString &path) {
        return replace(path, [](const QString &at) { return makeLink(u"../outside"_s, at); });
    });
}

bool tst_concurrentChanges::scanAndCheck(const QStringList &checked)
{
    m_driver->setFolders({path(u"tree"_s)});
    if (!m_driver->scan())
        return false;
    m_driver->checkAll(false);
    for (const QString &each : checked)
        m_driver->check(each);
    return true;
}

/// Presses Delete with the second and the third copy marked. The third is unchanged.
void tst_concurrentChanges::checkDeletion(Fate fate)
{
    DiskState expected = m_tree->state();
    expected.remove(m_tree->rawName(m_copies.at(2)));
    if (fate == Fate::Deleted)
        expected.remove(m_tree->rawName(m_copies.at(1)));
    const QList<ShownBox> boxes = m_driver->clickAndCloseBoxes("btnRemoveSelected");
    QCOMPARE(boxes.value(0), deletionBox(fate == Fate::Deleted ? 2 : 1, fate == Fate::Failed ? 1 : 0));
    QVERIFY(m_tree->state() == expected);
}

void tst_concurrentChanges::analysesTheRemainingFiles_data()
{
    addChanges([](Fate pressed, Fate) { return pressed; });
}

/// Between the walk and the analysis: whatever the second copy has become is no copy of the others.
void tst_concurrentChanges::analysesTheRemainingFiles()
{
    QFETCH(const Change, change);
    const QStringList collected = sorted(collect({path(u"tree"_s)}));
    QCOMPARE(collected, m_copies);
    if (!change(m_copies.at(1)))
        QSKIP("There is no such thing on this system");

    const Analysis analysis(collected);
    QCOMPARE(analysis.files(), (QList<QStringList>{{m_copies.at(0), m_copies.at(2)}}));
    QCOMPARE(analysis.groups.constFirst().markedFiles.size(), 1);
}

void tst_concurrentChanges::deletesAfterAChange_data()
{
    addChanges([](Fate pressed, Fate) { return pressed; });
}

/// Between the view and the deletion.
void tst_concurrentChanges::deletesAfterAChange()
{
    QFETCH(const Change, change);
    QFETCH(const Fate, fate);
    QVERIFY(scanAndCheck(m_copies.mid(1)));
    if (!change(m_copies.at(1)))
        QSKIP("There is no such thing on this system");
    checkDeletion(fate);
}

void tst_concurrentChanges::showsAChange_data()
{
    addChanges([](Fate, Fate seen) { return seen; });
}

/// Between the analysis and the view: the rows are built, and the pictures in them loaded, after the change.
void tst_concurrentChanges::showsAChange()
{
    QFETCH(const Change, change);
    QFETCH(const Fate, fate);
    QFETCH(const bool, hasRow);
    QVERIFY(scanAndCheck(m_copies.mid(1)));
    if (!change(m_copies.at(1)))
        QSKIP("There is no such thing on this system");

    m_driver->click("btnAll");
    QTest::qWait(0);
    QCOMPARE(m_driver->fileRow(m_copies.at(1)) != nullptr, hasRow);
    QCOMPARE(m_driver->checkedPaths(), hasRow ? m_copies.mid(1) : m_copies.mid(2));
    checkDeletion(fate);
}

/// The link goes, what it leads to stays.
void tst_concurrentChanges::neverFollowsAFileThatBecameALink()
{
    QVERIFY(scanAndCheck(m_copies.mid(1)));
    QVERIFY(QFile::remove(m_copies.at(1)));
    if (!makeLink(u"1.jpg"_s, m_copies.at(1)))
        QSKIP("There are no symbolic links here");
    checkDeletion(Fate::Deleted);
    QVERIFY(QFile::exists(m_copies.at(0)));
}

void tst_concurrentChanges::countsAFailureInAReadOnlyFolder()
{
    for (const QString &copy : std::as_const(m_copies))
        QVERIFY(QFile::rename(copy, path(u"tree/"_s + QFileInfo(copy).completeBaseName())));
    QVERIFY(scanAndCheck({path(u"tree/2"_s)}));
    allowAccess(path({}));
    allowReadingOnly(path(u"tree"_s));
    const DiskState before = m_tree->state();

    QList<ShownBox> boxes;
    bool keptOut = false;
    {
        const UnprivilegedUser user;
        keptOut = !QFile(path(u"tree/new"_s)).open(QIODevice::WriteOnly);
        if (keptOut)
            boxes = m_driver->clickAndCloseBoxes("btnRemoveSelected");
    }
    allowAccess(path(u"tree"_s));
    if (!keptOut)
        QSKIP("Permissions keep nobody out here");
    QCOMPARE(boxes.value(0).text, u"Deleted 0 files successfully, 1 files failed."_s);
    QCOMPARE(goneFrom(before, m_tree->state()), QList<QByteArray>());
    QCOMPARE(sorted(m_driver->filePaths()), (QStringList{path(u"tree/1"_s), path(u"tree/3"_s)}));
}

/// Deleting a file is a matter of its folder's permissions.
void tst_concurrentChanges::deletesAReadOnlyFile()
{
    QVERIFY(QFile::setPermissions(m_copies.at(1), QFile::ReadOwner));
    QVERIFY(scanAndCheck(m_copies.mid(1)));
#ifdef Q_OS_WIN
    checkDeletion(Fate::Failed);
#else
    checkDeletion(Fate::Deleted);
#endif
}

void tst_concurrentChanges::countsAFailureForAnImmutableFile()
{
    QVERIFY(scanAndCheck(m_copies.mid(1)));
    const ImmutableFile immutable(m_copies.at(1));
    if (!immutable.obstacle().isEmpty())
        QSKIP(qPrintable(immutable.obstacle()));
    checkDeletion(Fate::Failed);
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 0);
}

void tst_concurrentChanges::deletesOnAFullDisk()
{
    QVERIFY(QDir(path(u"tree"_s)).removeRecursively());
    QVERIFY(QDir().mkdir(path(u"tree"_s)));
    SmallDisk disk(path(u"tree"_s));
    if (!disk.obstacle().isEmpty())
        QSKIP(qPrintable(disk.obstacle()));
    for (const QString &copy : std::as_const(m_copies))
        writeFile(copy, pictureBytes);
    QVERIFY(disk.fillUp(u"filler"_s));
    QVERIFY(scanAndCheck(m_copies.mid(1)));
    m_driver->click("btnAll");
    QTest::qWait(0);
    checkDeletion(Fate::Deleted);
}

void tst_concurrentChanges::countsAFailureOnAReadOnlyDisk()
{
    SmallDisk disk(path(u"tree"_s));
    if (!disk.obstacle().isEmpty())
        QSKIP(qPrintable(disk.obstacle()));
    for (const QString &copy : std::as_const(m_copies))
        writeFile(copy, pictureBytes);
    QVERIFY(scanAndCheck(m_copies.mid(1)));
    if (!disk.makeReadOnly())
        QSKIP("The disk cannot be made read-only");
    const DiskState before = m_tree->state();
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected").value(0).text,
        u"Deleted 0 files successfully, 2 files failed."_s);
    QVERIFY(m_tree->state() == before);
}

QTEST_MAIN(tst_concurrentChanges)
#include "tst_concurrentChanges.moc"
