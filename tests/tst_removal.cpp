#include "tests/support/EqualFiles.h"
#include "tests/support/RemovalRun.h"
#include "tests/support/ReportFiles.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QTest>

using Qt::StringLiterals::operator""_s;

/// Removal of the copies in a report.
class tst_removal : public QObject, private EqualFiles
{
    Q_OBJECT

private slots:
    void init();

    void showsAPlanAndTouchesNothing();
    void deletesCopies();
    void replacesCopiesByHardLinks();
    void keepsLinksAndReferences();
    void actsInEveryGroupInOrder();
    void endsBeforeTheNextActionWhenInterrupted();
    void endsAComparisonWhenInterrupted();
    void endsWhenPrintingFails();
};

void tst_removal::init()
{
    reset();
}

void tst_removal::showsAPlanAndTouchesNothing()
{
    const QStringList before = treeOf(m_folder->path());
    const RemovalOutcome outcome = carryOut(
        abcReport(), {.apply = false, .action = RemovalAction::Trash, .journal = m_folder->filePath(u"j"_s)});
    QCOMPARE(outcome.exitCode, ExitDone);
    QCOMPARE(outcome.lines, (QStringList{u"keep: "_s + path(u"a"_s), u"would trash: "_s + path(u"b"_s),
                                u"would trash: "_s + path(u"c"_s),
                                u"would trash 2 files, 14 B; nothing was touched (--apply does it)"_s}));
    QCOMPARE(treeOf(m_folder->path()), before);
}

void tst_removal::deletesCopies()
{
    const RemovalOutcome outcome = carryOut(abcReport(), applying(RemovalAction::Delete));
    QCOMPARE(outcome.exitCode, ExitDone);
    QCOMPARE(outcome.lines, (QStringList{u"keep: "_s + path(u"a"_s), u"deleted: "_s + path(u"b"_s),
                                u"deleted: "_s + path(u"c"_s), u"deleted 2 files, 14 B"_s}));
    QCOMPARE(treeOf(m_files), QStringList{u"a: content"_s});
}

void tst_removal::replacesCopiesByHardLinks()
{
    const RemovalOutcome outcome = carryOut(abcReport(), applying(RemovalAction::HardLink));
    QCOMPARE(outcome.exitCode, ExitDone);
    QCOMPARE(treeOf(m_files), (QStringList{u"a: content"_s, u"b: content"_s, u"c: content"_s}));
    QCOMPARE(identityAt(path(u"b"_s)), identityAt(path(u"a"_s)));
    QCOMPARE(identityAt(path(u"c"_s)), identityAt(path(u"a"_s)));
    // In a second run, all are the same file.
    QCOMPARE(carryOut(abcReport(), applying(RemovalAction::HardLink)).exitCode, ExitRefused);
}

void tst_removal::keepsLinksAndReferences()
{
    QVERIFY(QFile::remove(path(u"c"_s)));
    if (!makeHardLink(path(u"b"_s), path(u"c"_s)))
        QSKIP("No hard links here");
    writeFile(path(u"d"_s), "content");
    writeFile(path(u"e"_s), "content");
    Report report =
        reportOf({groupOf({path(u"a"_s), path(u"b"_s), path(u"c"_s), path(u"d"_s), path(u"e"_s)})});
    report.groups[0].files[2].action = FileAction::Link;
    report.groups[0].files[3].action = FileAction::Reference;
    report.groups[0].files[4].action = FileAction::Keep;
    const RemovalOutcome outcome = carryOut(report, applying(RemovalAction::Delete));
    QCOMPARE(outcome.exitCode, ExitDone);
    QCOMPARE(
        treeOf(m_files), (QStringList{u"a: content"_s, u"c: content"_s, u"d: content"_s, u"e: content"_s}));
    // Its other name keeps the bytes in use.
    QCOMPARE(outcome.lines.last(), u"deleted 1 file, 0 B"_s);
}

void tst_removal::actsInEveryGroupInOrder()
{
    writeFile(path(u"x"_s), "other");
    writeFile(path(u"y"_s), "other");
    Report report = reportOf({groupOf({path(u"y"_s), path(u"x"_s)}), abcReport().groups.first()});
    report.groups[1].kept = 2;
    report.groups[1].files[0].action = FileAction::Remove;
    report.groups[1].files[2].action = FileAction::Keep;
    const RemovalOutcome outcome = carryOut(report, applying(RemovalAction::Delete));
    QCOMPARE(outcome.exitCode, ExitDone);
    QCOMPARE(outcome.lines,
        (QStringList{u"keep: "_s + path(u"y"_s), u"deleted: "_s + path(u"x"_s), u"keep: "_s + path(u"c"_s),
            u"deleted: "_s + path(u"a"_s), u"deleted: "_s + path(u"b"_s), u"deleted 3 files, 19 B"_s}));
    QCOMPARE(treeOf(m_files), (QStringList{u"c: content"_s, u"y: other"_s}));
}

void tst_removal::endsBeforeTheNextActionWhenInterrupted()
{
    bool isInterrupted = false;
    const RemovalOutcome outcome = carryOut(
        abcReport(), applying(RemovalAction::HardLink),
        [&](const QString & /*candidate*/) { isInterrupted = true; }, [&] { return isInterrupted; });
    QCOMPARE(outcome.exitCode, ExitInterrupted);
    QCOMPARE(outcome.lines.last(), u"hardlinked: "_s + path(u"b"_s));
    QCOMPARE(outcome.errors, QStringList{u"interrupted: hardlinked 1 file, 7 B"_s});
    QVERIFY(identityAt(path(u"b"_s)) == identityAt(path(u"a"_s)));
    QVERIFY(identityAt(path(u"c"_s)) != identityAt(path(u"a"_s)));
    QCOMPARE(outcome.refusals, QStringList());
}

void tst_removal::endsAComparisonWhenInterrupted()
{
    int asked = 0;
    // The first check is before the file, the second one in the comparison.
    const RemovalOutcome outcome =
        carryOut(abcReport(), applying(RemovalAction::Delete), {}, [&] { return ++asked == 2; });
    QCOMPARE(outcome.exitCode, ExitInterrupted);
    QCOMPARE(outcome.errors, QStringList{u"interrupted: deleted 0 files, 0 B"_s});
    QCOMPARE(treeOf(m_files), (QStringList{u"a: content"_s, u"b: content"_s, u"c: content"_s}));
}

void tst_removal::endsWhenPrintingFails()
{
    const Report report = abcReport();
    Removal removal(report, applying(RemovalAction::Delete),
        {.print = [](const QString & /*line*/) { return false; },
            .printRefusal = [](const QString & /*line*/) {},
            .printError = [](const QString & /*message*/) {},
            .interrupted = [] { return false; },
            .compared = {}});
    QCOMPARE(removal.run(), ExitFailed);
    QCOMPARE(treeOf(m_files), (QStringList{u"a: content"_s, u"c: content"_s}));
}

QTEST_GUILESS_MAIN(tst_removal)
#include "tst_removal.moc"
