#include "tests/support/CollectedFiles.h"
#include "tests/support/ImmutableFile.h"
#include "tests/support/MarkedCopies.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/TestFiles.h"
#include "tests/support/UnprivilegedUser.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

using Qt::StringLiterals::operator""_s;

/// Delete with files that cannot be deleted or with a full disk.
class tst_deletionObstacles : public QObject, private MarkedCopies
{
    Q_OBJECT

private slots:
    void init();

    void countsAFailureInAReadOnlyFolder();
    void deletesAReadOnlyFile();
    void countsAFailureForAnImmutableFile();
    void deletesOnAFullDisk();
    void countsAFailureOnAReadOnlyDisk();
};

void tst_deletionObstacles::init()
{
    reset();
}

void tst_deletionObstacles::countsAFailureInAReadOnlyFolder()
{
    for (const QString &copy : std::as_const(m_copies))
        QVERIFY(QFile::rename(copy, path(u"tree/"_s + QFileInfo(copy).completeBaseName())));
    QVERIFY(scanAndMark({path(u"tree/2"_s)}));
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
        QSKIP("Permissions do not restrict this process");
    QCOMPARE(boxes.value(0).text, u"Deleted 0 files successfully, 1 files failed."_s);
    QCOMPARE(goneFrom(before, m_tree->state()), QList<QByteArray>());
    QCOMPARE(sorted(m_driver->filePaths()), (QStringList{path(u"tree/1"_s), path(u"tree/3"_s)}));
}

/// On Unix the permissions of the folder decide.
void tst_deletionObstacles::deletesAReadOnlyFile()
{
    QVERIFY(QFile::setPermissions(m_copies.at(1), QFile::ReadOwner));
    QVERIFY(scanAndMark(m_copies.mid(1)));
#ifdef Q_OS_WIN
    checkDeletion(Fate::Failed);
#else
    checkDeletion(Fate::Deleted);
#endif
}

void tst_deletionObstacles::countsAFailureForAnImmutableFile()
{
    QVERIFY(scanAndMark(m_copies.mid(1)));
    const ImmutableFile immutable(m_copies.at(1));
    if (!immutable.obstacle().isEmpty())
        QSKIP(qPrintable(immutable.obstacle()));
    checkDeletion(Fate::Failed);
    QCOMPARE(m_driver->tree()->topLevelItemCount(), 0);
}

void tst_deletionObstacles::deletesOnAFullDisk()
{
    QVERIFY(QDir(path(u"tree"_s)).removeRecursively());
    QVERIFY(QDir().mkdir(path(u"tree"_s)));
    SmallDisk disk(path(u"tree"_s));
    if (!disk.obstacle().isEmpty())
        QSKIP(qPrintable(disk.obstacle()));
    for (const QString &copy : std::as_const(m_copies))
        writeFile(copy, m_content);
    QVERIFY(disk.fillUp(u"filler"_s));
    QVERIFY(scanAndMark(m_copies.mid(1)));
    m_driver->click("btnAll");
    QTest::qWait(0);
    checkDeletion(Fate::Deleted);
}

void tst_deletionObstacles::countsAFailureOnAReadOnlyDisk()
{
    SmallDisk disk(path(u"tree"_s));
    if (!disk.obstacle().isEmpty())
        QSKIP(qPrintable(disk.obstacle()));
    for (const QString &copy : std::as_const(m_copies))
        writeFile(copy, m_content);
    QVERIFY(scanAndMark(m_copies.mid(1)));
    if (!disk.makeReadOnly())
        QSKIP("The disk cannot be made read-only");
    const DiskState before = m_tree->state();
    QCOMPARE(m_driver->clickAndCloseBoxes("btnRemoveSelected").value(0).text,
        u"Deleted 0 files successfully, 2 files failed."_s);
    QVERIFY(m_tree->state() == before);
}

QTEST_MAIN(tst_deletionObstacles)
#include "tst_deletionObstacles.moc"
