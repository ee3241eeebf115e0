#include "cli/Trash.h"
#include "tests/support/EqualFiles.h"
#include "tests/support/RemovalRun.h"
#include "tests/support/ReportFiles.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

/// Changes the files of a test.
using Change = std::function<void()>;

void remove(const QString &file)
{
    if (!QFile::remove(file))
        qFatal("Cannot remove %s", qPrintable(file));
}

} // namespace

Q_DECLARE_METATYPE(Change)

namespace {

/// A row of leavesChangedFilesAlone(). \a refused are the names of the files that are left alone.
void row(const char *name, const Change &change, const QString &reason, bool seenInPlan,
    const QStringList &refused)
{
    QTest::newRow(name) << change << reason << seenInPlan << refused;
}

} // namespace

/// Removal of files that changed: after the report was written, and after they were compared.
class tst_removalOfChangedFiles : public QObject, private EqualFiles
{
    Q_OBJECT

private slots:
    void init();

    void leavesChangedFilesAlone_data();
    void leavesChangedFilesAlone();
    void checksAgainAfterComparing_data();
    void checksAgainAfterComparing();
    void putsBackWhatItTrashedByMistake();
    void refusesAFileInASwappedFolder();

private:
    // Rows of leavesChangedFilesAlone().
    void addChangedCopies();
    void addChangedKeptFiles();
    void addLinksAndPipes();
};

void tst_removalOfChangedFiles::init()
{
    reset();
}

void tst_removalOfChangedFiles::leavesChangedFilesAlone_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<bool>("seenInPlan");
    QTest::addColumn<QStringList>("refused");
    addChangedCopies();
    addChangedKeptFiles();
#ifdef Q_OS_UNIX
    addLinksAndPipes();
#endif
}

void tst_removalOfChangedFiles::addChangedCopies()
{
    row("changed", [this] { writeFile(path(u"b"_s), "Content"); }, u"contents differ"_s, false, {u"b"_s});
    row("replaced, same times", [this] { replaceFile(path(u"b"_s), "contenT"); }, u"contents differ"_s, false,
        {u"b"_s});
    row("grown", [this] { writeFile(path(u"b"_s), "contents"); }, u"its size is not that of the report"_s,
        true, {u"b"_s});
    row("truncated", [this] { writeFile(path(u"b"_s), ""); }, u"its size is not that of the report"_s, true,
        {u"b"_s});
    row("removed", [this] { remove(path(u"b"_s)); }, u"it is missing"_s, true, {u"b"_s});
    row("folder",
        [this] {
            remove(path(u"b"_s));
            QDir().mkpath(path(u"b"_s));
        },
        u"it is no regular file"_s, true, {u"b"_s});
    row("hard link to the kept file",
        [this] {
            remove(path(u"b"_s));
            (void)makeHardLink(path(u"a"_s), path(u"b"_s));
        },
        u"it is the same file as the kept one"_s, true, {u"b"_s});
}

void tst_removalOfChangedFiles::addChangedKeptFiles()
{
    row("kept file changed", [this] { writeFile(path(u"a"_s), "Content"); }, u"contents differ"_s, false,
        {u"b"_s, u"c"_s});
    row("kept file replaced", [this] { replaceFile(path(u"a"_s), "contenT"); }, u"contents differ"_s, false,
        {u"b"_s, u"c"_s});
    row("kept file grown", [this] { writeFile(path(u"a"_s), "contents"); },
        u"its size is not that of the report"_s, true, {u"b"_s, u"c"_s});
    row("kept file removed", [this] { remove(path(u"a"_s)); }, u"it is missing"_s, true, {u"b"_s, u"c"_s});
    row("kept file is a folder",
        [this] {
            remove(path(u"a"_s));
            QDir().mkpath(path(u"a"_s));
        },
        u"it is no regular file"_s, true, {u"b"_s, u"c"_s});
    row("both grown alike",
        [this] {
            writeFile(path(u"a"_s), "contents");
            writeFile(path(u"b"_s), "contents");
        },
        u"its size is not that of the report"_s, true, {u"b"_s, u"c"_s});
}

#ifdef Q_OS_UNIX
void tst_removalOfChangedFiles::addLinksAndPipes()
{
    row("link to the kept file",
        [this] {
            remove(path(u"b"_s));
            (void)makeLink(path(u"a"_s), path(u"b"_s));
        },
        u"it is a link"_s, true, {u"b"_s});
    row("link to a copy",
        [this] {
            remove(path(u"b"_s));
            (void)makeLink(path(u"c"_s), path(u"b"_s));
        },
        u"it is a link"_s, true, {u"b"_s});
    row("link to nowhere",
        [this] {
            remove(path(u"b"_s));
            (void)makeLink(u"nowhere"_s, path(u"b"_s));
        },
        u"it is a link"_s, true, {u"b"_s});
    row("pipe",
        [this] {
            remove(path(u"b"_s));
            (void)makePipe(path(u"b"_s));
        },
        u"it is no regular file"_s, true, {u"b"_s});
    row("socket",
        [this] {
            remove(path(u"b"_s));
            (void)makeSocket(path(u"b"_s));
        },
        u"it is no regular file"_s, true, {u"b"_s});
    row("kept file is a link",
        [this] {
            QFile::rename(path(u"a"_s), path(u"a"_s) + u'2');
            (void)makeLink(path(u"a"_s) + u'2', path(u"a"_s));
        },
        u"it is a link"_s, true, {u"b"_s, u"c"_s});
    row("kept file is a pipe",
        [this] {
            remove(path(u"a"_s));
            (void)makePipe(path(u"a"_s));
        },
        u"it is no regular file"_s, true, {u"b"_s, u"c"_s});
}
#endif

void tst_removalOfChangedFiles::leavesChangedFilesAlone()
{
    QFETCH(const Change, change);
    QFETCH(const QString, reason);
    QFETCH(const bool, seenInPlan);
    QFETCH(const QStringList, refused);
    const Report report = abcReport();
    change();
    const QStringList before = treeOf(m_files);

    const RemovalOutcome planned = carryOut(report, planning(RemovalAction::Delete));
    QCOMPARE(planned.exitCode, seenInPlan ? ExitRefused : ExitDone);
    QCOMPARE(treeOf(m_files), before);

    QList<RemovalAction> actions{RemovalAction::HardLink, RemovalAction::Delete};
    if (hasTrash)
        actions.prepend(RemovalAction::Trash);
    for (const auto action : std::as_const(actions)) {
        const RemovalOutcome outcome = carryOut(report, applying(action));
        QCOMPARE(outcome.exitCode, ExitRefused);
        // The first action already handled c.
        QCOMPARE(
            outcome.refusals.size(), refused.size() + (refused.size() == 1 && action != actions.first()));
        for (qsizetype i = 0; i < refused.size(); ++i) {
            const QString &line = outcome.refusals.at(i);
            QVERIFY2(line.startsWith(u"refused: "_s + path(refused.at(i)) + u": "_s), qPrintable(line));
            QVERIFY2(line.endsWith(reason), qPrintable(line));
        }
        if (seenInPlan && action == RemovalAction::Trash)
            QCOMPARE(outcome.refusals, planned.refusals);
    }
    QStringList expected = before;
    if (refused.size() == 1 && hasTrash)
        expected.removeOne(u"c: content"_s);
    QCOMPARE(treeOf(m_files), expected);
}

void tst_removalOfChangedFiles::checksAgainAfterComparing_data()
{
    QTest::addColumn<RemovalAction>("action");
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("reason");

    const auto a = [this] { return path(u"a"_s); };
    const auto b = [this] { return path(u"b"_s); };
    for (const auto action : {RemovalAction::Trash, RemovalAction::Delete, RemovalAction::HardLink}) {
        const auto row = [&](const char *name, const Change &change, const QString &reason) {
            QTest::addRow("%s, %s", qPrintable(nameOf(action)), name) << action << change << reason;
        };
        row(
            "replaced", [=] { replaceFile(b(), "valuabl"); }, u"it was replaced while it was compared"_s);
        const auto write = [](const QString &file, const QByteArray &content) {
            writeFile(file, content);
            // The clock may be too coarse to give the file a new time.
            setModificationTime(file, 1);
        };
        row(
            "written", [=] { write(b(), "content"); }, u"it changed while it was compared"_s);
        row(
            "grown", [=] { write(b(), "contents"); }, u"it changed while it was compared"_s);
        row(
            "removed", [=] { QFile::remove(b()); }, u"it is missing"_s);
        row(
            "kept file replaced", [=] { replaceFile(a(), "content"); },
            u"it was replaced while it was compared"_s);
        row(
            "kept file written", [=] { write(a(), "CONTENT"); }, u"it changed while it was compared"_s);
        row(
            "kept file renamed", [=] { QFile::rename(a(), a() + u'2'); }, u"it is missing"_s);
        row(
            "swapped",
            [=, this] {
                QFile::rename(a(), path(u"x"_s));
                QFile::rename(b(), a());
                QFile::rename(path(u"x"_s), b());
            },
            u"it was replaced while it was compared"_s);
    }
}

void tst_removalOfChangedFiles::checksAgainAfterComparing()
{
#ifdef Q_OS_WIN
    QSKIP("An open file cannot be changed here");
#endif
    QFETCH(const RemovalAction, action);
    QFETCH(const Change, change);
    QFETCH(const QString, reason);
    const Report report = reportOf({groupOf({path(u"a"_s), path(u"b"_s)})});
    QStringList changed;
    const auto hook = [&](const QString & /*candidate*/) {
        change();
        changed = treeOf(m_files);
    };
    const RemovalOutcome outcome = carryOut(report, applying(action), hook);
    QCOMPARE(outcome.exitCode, ExitRefused);
    QCOMPARE(outcome.refusals.size(), 1);
    QVERIFY2(outcome.refusals.first().endsWith(reason), qPrintable(outcome.refusals.first()));
    QCOMPARE(treeOf(m_files), changed);
}

/// Another file takes the path at the very last moment, after every check.
void tst_removalOfChangedFiles::putsBackWhatItTrashedByMistake()
{
#ifdef Q_OS_WIN
    QSKIP("There may be no recycle bin here");
#endif
    HeldFile held(path(u"b"_s), [] { return false; });
    QVERIFY(!held.obstacle());
    replaceFile(path(u"b"_s), "valuabl");
    const auto obstacle = moveToTrash(held);
    QVERIFY(obstacle);
    QCOMPARE(obstacle->kind, Obstacle::Kind::NotAsReported);
    QCOMPARE(contentOf(path(u"b"_s)), "valuabl");
}

/// The path leads to another file, through another folder of the same name.
void tst_removalOfChangedFiles::refusesAFileInASwappedFolder()
{
#ifdef Q_OS_WIN
    QSKIP("A folder with open files cannot be renamed here");
#endif
    writeFile(path(u"folder/b"_s), "content");
    const Report report = reportOf({groupOf({path(u"a"_s), path(u"folder/b"_s)})});
    QStringList changed;
    const RemovalOutcome outcome =
        carryOut(report, applying(RemovalAction::Delete), [&](const QString & /*candidate*/) {
            QVERIFY(QFile::rename(path(u"folder"_s), path(u"old"_s)));
            writeFile(path(u"folder/b"_s), "valuabl");
            changed = treeOf(m_files);
        });
    QCOMPARE(outcome.exitCode, ExitRefused);
    QCOMPARE(treeOf(m_files), changed);
}

QTEST_GUILESS_MAIN(tst_removalOfChangedFiles)
#include "tst_removalOfChangedFiles.moc"
