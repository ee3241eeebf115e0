#include "tests/support/CommandRun.h"
#include "tests/support/RemovalRun.h"
#include "tests/support/ReportFiles.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

/// Removal to the trash: the trash folder, its .trashinfo files, and failures, which leave the file alone.
class tst_trash : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void trashesOnTheVolumeOfTheFile();
    void keepsFilesOfTheSameNameApart();
    void encodesThePathInTheTrashInfo();
    void createsAMissingTrash();
    void leavesFilesWithoutATrash_data();
    void leavesFilesWithoutATrash();
    void leavesFilesWithLongNames();

private:
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_folder->filePath(name);
    }

    /// Moves the second of \a files to the trash, as a copy of the first.
    [[nodiscard]] static RemovalOutcome trash(const QStringList &files)
    {
        return carryOut(reportOf({groupOf(files)}), applying(RemovalAction::Trash));
    }

    /// Checks that nothing is done to the second of \a files.
    void checkLeftAlone(const QStringList &files, const QString &reason);

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_trash::initTestCase()
{
#ifdef Q_OS_WIN
    QSKIP("There may be no recycle bin here");
#endif
}

void tst_trash::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    writeFile(path(u"files/a"_s), "content");
    writeFile(path(u"files/b"_s), "content");
    QVERIFY(QDir().mkpath(path(u"disk"_s)));
    qputenv("XDG_DATA_HOME", QFile::encodeName(path(u"data"_s)));
}

void tst_trash::checkLeftAlone(const QStringList &files, const QString &reason)
{
    const QStringList before = treeOf(path(u"files"_s)) + treeOf(path(u"disk"_s));
    const RemovalOutcome outcome = trash(files);
    QCOMPARE(outcome.exitCode, ExitFailed);
    QCOMPARE(outcome.refusals.size(), 1);
    QVERIFY2(outcome.refusals.first().contains(reason), qPrintable(outcome.refusals.first()));
    QCOMPARE(treeOf(path(u"files"_s)) + treeOf(path(u"disk"_s)), before);
}

void tst_trash::trashesOnTheVolumeOfTheFile()
{
    const SmallDisk disk(path(u"disk"_s));
    if (!disk.obstacle().isEmpty())
        QSKIP(qPrintable(disk.obstacle()));
    writeFile(path(u"disk/b"_s), "content");
    QCOMPARE(trash({path(u"files/a"_s), path(u"disk/b"_s)}).exitCode, ExitDone);
    QVERIFY(
        treeOf(path(u"disk"_s)).filter(QRegularExpression(u"^\\.Trash-[0-9]+/files/b: content$"_s)).size() ==
        1);
    QVERIFY(!QFile::exists(path(u"disk/b"_s)));
}

void tst_trash::keepsFilesOfTheSameNameApart()
{
    writeFile(path(u"files/c/b"_s), "content");
    QCOMPARE(trash({path(u"files/a"_s), path(u"files/b"_s), path(u"files/c/b"_s)}).exitCode, ExitDone);
    QCOMPARE(treeOf(path(u"data/Trash/files"_s)).size(), 2);
    QCOMPARE(treeOf(path(u"files"_s)), (QStringList{u"a: content"_s, u"c/"_s}));
}

/// Other programs read "%41" as "A" when they restore a file.
void tst_trash::encodesThePathInTheTrashInfo()
{
    const QString name = u"100%41 ä\n"_s;
    writeFile(path(u"files/"_s + name), "content");
    QCOMPARE(trash({path(u"files/a"_s), path(u"files/"_s + name)}).exitCode, ExitDone);
    const QByteArray note = contentOf(path(u"data/Trash/info/"_s + name + u".trashinfo"_s));
    const QByteArray noted = QFile::encodeName(path(u"files"_s)) + "/100%2541%20%C3%A4%0A";
    QVERIFY2(note.startsWith("[Trash Info]\nPath=" + noted + "\nDeletionDate="), note.constData());
}

void tst_trash::createsAMissingTrash()
{
    qputenv("XDG_DATA_HOME", QFile::encodeName(path(u"data/not/yet"_s)));
    QCOMPARE(trash({path(u"files/a"_s), path(u"files/b"_s)}).exitCode, ExitDone);
    QCOMPARE(treeOf(path(u"data/not/yet/Trash/files"_s)), QStringList{u"b: content"_s});
}

void tst_trash::leavesFilesWithoutATrash_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::addColumn<QString>("file");
    QTest::newRow("the place is a file") << u"data"_s << u"files/b"_s;
    QTest::newRow("the trash is a file") << u"data/Trash"_s << u"files/b"_s;
    QTest::newRow("a part is a file") << u"data/Trash/info"_s << u"files/b"_s;
    QTest::newRow("full disk") << u"full"_s << u"disk/b"_s;
}

void tst_trash::leavesFilesWithoutATrash()
{
    QFETCH(const QString, obstacle);
    QFETCH(const QString, file);
    SmallDisk disk(path(u"disk"_s));
    if (obstacle == u"full"_s && !disk.obstacle().isEmpty())
        QSKIP(qPrintable(disk.obstacle()));
    writeFile(path(u"disk/b"_s), "content");
    if (obstacle == u"full"_s) {
        // The folders exist, but there is no space for a file.
        const QString trash = path(u"disk/.Trash-"_s) + runScript(u"id -u"_s, {}).output.trimmed();
        QVERIFY(QDir().mkpath(trash + u"/files"_s) && QDir().mkpath(trash + u"/info"_s));
        for (int i = 0; QFile(path(u"disk/%1"_s.arg(i))).open(QFile::WriteOnly); ++i) {
        }
    } else {
        writeFile(path(obstacle), "not a folder");
    }
    // Qt's own code would use the working folder.
    const QString workingFolder = QDir::currentPath();
    QVERIFY(QDir().mkpath(path(u"work"_s)) && QDir::setCurrent(path(u"work"_s)));
    checkLeftAlone({path(u"files/a"_s), path(file)}, u"no trash can be used"_s);
    QDir::setCurrent(workingFolder);
    QCOMPARE(treeOf(path(u"work"_s)), QStringList());
}

/// The .trashinfo file has a longer name.
void tst_trash::leavesFilesWithLongNames()
{
    const auto named = [this](qsizetype length) { return path(u"files/"_s + QString(length, u'n')); };
    for (const qsizetype length : {245, 246, 255}) {
        writeFile(named(length), "content");
        const RemovalOutcome outcome = trash({path(u"files/a"_s), named(length)});
        QCOMPARE(outcome.exitCode, length == 245 ? ExitDone : ExitFailed);
        QCOMPARE(QFile::exists(named(length)), length != 245);
    }
    // The name is taken, and there is no room for a number.
    writeFile(named(245), "content");
    checkLeftAlone({path(u"files/a"_s), named(245)}, u"too long"_s);
}

QTEST_GUILESS_MAIN(tst_trash)
#include "tst_trash.moc"
