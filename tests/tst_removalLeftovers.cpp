#include "cli/Leftovers.h"
#include "tests/support/EqualFiles.h"
#include "tests/support/RemovalRun.h"
#include "tests/support/ReportFiles.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QFile>
#include <QTest>

using Qt::StringLiterals::operator""_s;

/// Temporary names that a killed removal left.
class tst_removalLeftovers : public QObject, private EqualFiles
{
    Q_OBJECT

private slots:
    void init();

    void removesTemporaryNamesOfKilledRuns();
    void leavesOtherFilesWithSuchNames();
    void leavesTemporaryNamesThatAreListed();
};

void tst_removalLeftovers::init()
{
    reset();
}

void tst_removalLeftovers::removesTemporaryNamesOfKilledRuns()
{
    writeFile(path(u"s/x"_s), "content");
    const QString leftover = path(u"s/"_s + temporaryName());
    if (!makeHardLink(path(u"a"_s), leftover))
        QSKIP("No hard links here");
    const Report report = reportOf({groupOf({path(u"a"_s), path(u"s/x"_s)})});
    QCOMPARE(carryOut(report, planning(RemovalAction::Delete)).exitCode, ExitDone);
    QVERIFY(QFile::exists(leftover));
    // Even if there is nothing else to do.
    QVERIFY(QFile::remove(path(u"s/x"_s)));
    QCOMPARE(carryOut(report, applying(RemovalAction::Delete)).exitCode, ExitRefused);
    QVERIFY(!QFile::exists(leftover));
    QCOMPARE(contentOf(path(u"a"_s)), "content");
}

void tst_removalLeftovers::leavesOtherFilesWithSuchNames()
{
    // Equal files, but not names of a file in the report.
    const QStringList others{temporaryName(), temporaryName() + u".txt"_s, u".quillory-.tmp"_s,
        u".quillory-0123456789ABCDEF.tmp"_s};
    for (const QString &name : others)
        writeFile(path(name), "content");
    if (!makeHardLink(path(u"a"_s), path(u".quillory-0.tmp"_s)))
        QSKIP("No hard links here");
    QCOMPARE(carryOut(abcReport(), applying(RemovalAction::Delete)).exitCode, ExitDone);
    for (const QString &name : others + QStringList{u".quillory-0.tmp"_s})
        QVERIFY2(QFile::exists(path(name)), qPrintable(name));
}

/// With --hidden, a search can list such a name and even keep it.
void tst_removalLeftovers::leavesTemporaryNamesThatAreListed()
{
    const QString leftover = path(temporaryName());
    if (!makeHardLink(path(u"a"_s), leftover))
        QSKIP("No hard links here");
    Report report = reportOf({groupOf({leftover, path(u"a"_s), path(u"b"_s)})});
    report.groups[0].files[1].action = FileAction::Link;
    QCOMPARE(carryOut(report, applying(RemovalAction::Delete)).exitCode, ExitDone);
    QCOMPARE(contentOf(leftover), "content");
}

QTEST_GUILESS_MAIN(tst_removalLeftovers)
#include "tst_removalLeftovers.moc"
