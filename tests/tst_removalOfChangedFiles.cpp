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

} // namespace

Q_DECLARE_METATYPE(Change)

/// Removal of files that changed: after the report was written, and after they were compared.
class tst_removalOfChangedFiles : public QObject, private EqualFiles
{
    Q_OBJECT

private slots:
    void init();

    void keepsChangedFiles_data();
    void keepsChangedFiles();
    void checksAgainAfterComparing_data();
    void checksAgainAfterComparing();
    void restoresAFileTrashedByMistake();
    void refusesAFileInASwappedFolder();
};

void tst_removalOfChangedFiles::init()
{
    reset();
}

void tst_removalOfChangedFiles::keepsChangedFiles_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<bool>("seenInPlan");
    QTest::addColumn<QStringList>("refused");

    const QStringList candidate{u"b"_s};
    const QStringList both{u"b"_s, u"c"_s};
    const auto a = [this] { return path(u"a"_s); };
    const auto b = [this] { return path(u"b"_s); };
    const auto remove = [](const QString &file) {
        if (!QFile::remove(file))
            qFatal("Cannot remove %s", qPrintable(file));
    };
    const auto row = [](const char *name, const Change &change, const QString &reason, bool seenInPlan,
                         const QStringList &refused) {
        QTest::newRow(name) << change << reason << seenInPlan << refused;
    };

    row(
        "changed", [=] { writeFile(b(), "Content"); }, u"contents differ"_s, false, candidate);
    row(
        "replaced, same times", [=] { replaceFile(b(), "contenT"); }, u"contents differ"_s, false, candidate);
    row(
        "grown", [=] { writeFile(b(), "contents"); }, u"its size is not that of the report"_s, true,
        candidate);
    row(
        "truncated", [=] { writeFile(b(), ""); }, u"its size is not that of the report"_s, true, candidate);
    row(
        "removed", [=] { remove(b()); }, u"it is missing"_s, true, candidate);
    row(
        "folder",
        [=] {
            remove(b());
            QDir().mkpath(b());
        },
        u"it is no regular file"_s, true, candidate);
    row(
        "hard link to the kept file",
        [=] {
            remove(b());
            (void)makeHardLink(a(), b());
        },
        u"it is the same file as the kept one"_s, true, candidate);
#ifdef Q_OS_UNIX
    row(
        "link to the kept file",
        [=] {
            remove(b());
            (void)makeLink(a(), b());
        },
        u"it is a link"_s, true, candidate);
    row(
        "link to a copy",
        [=, this] {
            remove(b());
            (void)makeLink(path(u"c"_s), b());
        },
        u"it is a link"_s, true, candidate);
    row(
        "link to nowhere",
        [=] {
            remove(b());
            (void)makeLink(u"nowhere"_s, b());
        },
        u"it is a link"_s, true, candidate);
    row(
        "pipe",
        [=] {
            remove(b());
            (void)makePipe(b());
        },
        u"it is no regular file"_s, true, candidate);
    row(
        "socket",
        [=] {
            remove(b());
            (void)makeSocket(b());
        },
        u"it is no regular file"_s, true, candidate);
    row(
        "kept file is a link",
        [=] {
            QFile::rename(a(), a() + u'2');
            (void)makeLink(a() + u'2', a());
        },
        u"it is a link"_s, true, both);
    row(
        "kept file is a pipe",
        [=] {
            remove(a());
            (void)makePipe(a());
        },
        u"it is no regular file"_s, true, both);
#endif
    row(
        "kept file changed", [=] { writeFile(a(), "Content"); }, u"contents differ"_s, false, both);
    row(
        "kept file replaced", [=] { replaceFile(a(), "contenT"); }, u"contents differ"_s, false, both);
    row(
        "kept file grown", [=] { writeFile(a(), "contents"); }, u"its size is not that of the report"_s, true,
        both);
    row(
        "kept file removed", [=] { remove(a()); }, u"it is missing"_s, true, both);
    row(
        "kept file is a folder",
        [=] {
            remove(a());
            QDir().mkpath(a());
        },
        u"it is no regular file"_s, true, both);
    row(
        "both grown alike",
        [=] {
            writeFile(a(), "contents");
            writeFile(b(), "contents");
        },
        u"its size is not that of the report"_s, true, both);
}

void tst_removalOfChangedFiles::keepsChangedFiles()
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
        // The first action has dealt with c.
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
            // Clocks may be too coarse to tell this time from that of the file before.
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
    QSKIP("Nobody can change a file here while it is compared");
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
void tst_removalOfChangedFiles::restoresAFileTrashedByMistake()
{
#ifdef Q_OS_WIN
    QSKIP("There is no recycle bin to be sure of here");
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
