#include "tests/support/CliFolder.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/UnprivilegedUser.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

#include <memory>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// Runs find. Root can read everything, so root runs the program as another user if possible.
CommandRun findAsUnprivilegedUser(const CliFolder &place, const QStringList &arguments)
{
    const QString script =
        u"[ \"$(id -u)\" = 0 ] && set -- setpriv --reuid=65534 --regid=65534 --clear-groups -- \"$@\"; exec \"$@\""_s;
    return runScript(
        script, QStringList{QStringLiteral(QUILLORY_CLI), u"find"_s} + arguments, {.folder = place.path()});
}

} // namespace

/// Several paths to one file, missing folders, unreadable files and undecodable names.
class tst_cliPaths : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void listsAFileOnce();
    void reportsHardLinks();
    void followsNoLinks();
    void reportsAMissingFolder();
    void reportsAFileInPlaceOfAFolderOnce();
    void reportsUnreadableFiles();
    void reportsUndecodableNames();
    void countsUndecodableNamesOnce();

private:
    std::unique_ptr<CliFolder> m_place;
};

void tst_cliPaths::init()
{
    m_place = std::make_unique<CliFolder>(QStringLiteral(QUILLORY_CLI));
    allowAccess(m_place->path());
}

void tst_cliPaths::listsAFileOnce()
{
    m_place->write(u"a/b/1"_s);
    m_place->write(u"a/b/2"_s);
    const QJsonObject found = m_place->report({u"a"_s, u"a/"_s, u"a/b"_s, u"./a"_s, m_place->path(u"a"_s)});
    QCOMPARE(found[u"folders"].toArray(), QJsonArray({m_place->path(u"a"_s), m_place->path(u"a/b"_s)}));
    QCOMPARE(found[u"summary"].toObject()[u"files"], 2);
    QCOMPARE(found[u"groups"].toArray()[0].toObject()[u"files"].toArray().size(), 2);
}

void tst_cliPaths::reportsHardLinks()
{
    m_place->write(u"a"_s);
    m_place->write(u"b1"_s);
    if (!makeHardLink(m_place->path(u"b1"_s), m_place->path(u"b0"_s)))
        QSKIP("there are no hard links here");
    m_place->write(u"c1"_s, "only names of one file");
    QVERIFY(makeHardLink(m_place->path(u"c1"_s), m_place->path(u"c0"_s)));
    const CommandRun run = m_place->find({u"--keep=first"_s, u"."_s});
    QCOMPARE(run.output, "5 B each, 2 files\n"
                         "  keep   ./a\n"
                         "  remove ./b0\n"
                         "  link   ./b1\n"
                         "\n"
                         "1 group, 1 file to remove, 5 B to win (for 1 file only when its last name goes)\n");
    QCOMPARE(m_place->report({u"."_s})[u"summary"].toObject()[u"files"], 3);
    QCOMPARE(m_place->foundPaths({u"."_s}), QStringList({u"./a"_s, u"./b0"_s}));
}

void tst_cliPaths::followsNoLinks()
{
    m_place->write(u"a/1"_s);
    m_place->write(u"b/2"_s);
    if (!makeLink(m_place->path(u"a/1"_s), m_place->path(u"b/3"_s)) ||
        !makeLink(m_place->path(u"a"_s), m_place->path(u"b/4"_s)))
        QSKIP("there are no symbolic links here");
    QCOMPARE(m_place->foundPaths({u"b"_s}), QStringList());
    // A FOLDER may be a link. Both paths lead to one file.
    QCOMPARE(m_place->foundPaths({u"b/4"_s, u"a"_s, u"b"_s}), QStringList({u"b/4/1"_s, u"b/2"_s}));
}

void tst_cliPaths::reportsAMissingFolder()
{
    m_place->write(u"a/1"_s);
    m_place->write(u"a/2"_s);
    const QJsonObject found = m_place->report({u"missing"_s, u"a"_s, u"missing"_s}, 1);
    QCOMPARE(found[u"summary"].toObject()[u"unreadable"], 1);
    QCOMPARE(found[u"groups"].toArray().size(), 1);
    const CommandRun run = m_place->find({u"--keep=first"_s, u"mis\nsing"_s, u"a"_s, u"a/1"_s});
    QCOMPARE(run.errors.count('\n'), 2);
    QVERIFY(run.errors.startsWith("quillory-cli: cannot read a/1: "));
    QVERIFY(run.errors.contains("\nquillory-cli: cannot read mis\\nsing: "));
    QVERIFY(run.output.contains("  remove a/2\n"));
    QVERIFY(run.output.contains("\n2 paths could not be read\n"));
    QCOMPARE(run.exitCode, 1);
}

void tst_cliPaths::reportsAFileInPlaceOfAFolderOnce()
{
    m_place->write(u"a/1"_s);
    if (!makeLink(m_place->path(u"a"_s), m_place->path(u"b"_s)))
        QSKIP("there are no symbolic links here");
    const CommandRun run = m_place->find({u"b/1"_s, u"a/1"_s});
    QCOMPARE(run.errors.count('\n'), 1);
    QVERIFY(run.errors.startsWith("quillory-cli: cannot read a/1: "));
    QCOMPARE(m_place->report({u"b/1"_s, u"a/1"_s}, 1)[u"summary"].toObject()[u"unreadable"], 1);
}

void tst_cliPaths::reportsUnreadableFiles()
{
    for (const QString &name : {u"a/1"_s, u"a/2"_s, u"a/3"_s, u"closed/4"_s})
        m_place->write(name);
    allowAccess(m_place->path(u"a"_s));
    denyAccess(m_place->path(u"a/2"_s));
    denyAccess(m_place->path(u"closed"_s));
    const CommandRun run = findAsUnprivilegedUser(*m_place, {u"--keep=first"_s, u"."_s, u"closed"_s});
    QVERIFY(QFile::setPermissions(
        m_place->path(u"closed"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    if (run.exitCode == -1 || run.output.contains("./a/2\n"))
        QSKIP("permissions have no effect here");
    QCOMPARE(run.errors.count('\n'), 2);
    QVERIFY(run.errors.startsWith("quillory-cli: cannot read ./a/2: "));
    QVERIFY(run.errors.contains("\nquillory-cli: cannot read ./closed: "));
    QVERIFY(run.output.contains("  keep   ./a/1\n  remove ./a/3\n\n2 paths could not be read\n"));
    QCOMPARE(run.exitCode, 1);
}

void tst_cliPaths::reportsUndecodableNames()
{
    m_place->write(u"1"_s);
    m_place->write(u"2"_s);
    if (!writeFileWithRawName(m_place->path(), "\xff", "equal"))
        QSKIP("every name is valid text here");
    const CommandRun run = m_place->find({u"--keep=first"_s, u"."_s});
    QCOMPARE(run.errors, "quillory-cli: 1 name left out: not valid text\n");
    QVERIFY(
        run.output.contains("\n1 name left out: not valid text\n1 group, 1 file to remove, 5 B to win\n"));
    QCOMPARE(run.exitCode, 1);
    const QJsonObject summary = m_place->report({u"."_s}, 1)[u"summary"].toObject();
    QCOMPARE(summary[u"undecodable_names"], 1);
    QCOMPARE(summary[u"files"], 2);
    QVERIFY(removeFileWithRawName(m_place->path(), "\xff"));
}

void tst_cliPaths::countsUndecodableNamesOnce()
{
    m_place->write(u"a/b/1"_s);
    const QString folder = m_place->path(u"a/b"_s);
    if (!writeFileWithRawName(folder, "\xff", "equal"))
        QSKIP("every name is valid text here");
    QVERIFY(writeFileWithRawName(m_place->path(u"a"_s), "\xff", "equal"));
    const QStringList folders{u"."_s, u"a"_s, u"./a/b"_s, folder};
    QCOMPARE(m_place->report(folders, 1)[u"summary"].toObject()[u"undecodable_names"], 2);
    QVERIFY(removeFileWithRawName(folder, "\xff"));
    QVERIFY(removeFileWithRawName(m_place->path(u"a"_s), "\xff"));
}

QTEST_GUILESS_MAIN(tst_cliPaths)
#include "tst_cliPaths.moc"
