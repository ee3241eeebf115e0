#include "cli/JsonReport.h"
#include "tests/support/CommandRun.h"
#include "tests/support/RemovalRun.h"
#include "tests/support/ReportFiles.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

const QString program = QStringLiteral(QUILLORY_CLI);

} // namespace

/// The program `quillory-cli remove`.
class tst_cliRemove : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void carriesOutAReportOfFind();
    void readsAReportFromStandardInput();
    void showsControlCharacters();
    void refusesFilesThatAreNoReport_data();
    void refusesFilesThatAreNoReport();
    void refusesAGigabyteOfGarbage_data();
    void refusesAGigabyteOfGarbage();
    void refusesWrongUsage_data();
    void refusesWrongUsage();
    void refusesTheReportAsJournal();
    void stopsWhenItsOutputCannotBeWritten();
    void endsWhenInterruptedWhileItWaitsForAReport();

private:
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_folder->filePath(name);
    }

    [[nodiscard]] CommandRun remove(const QStringList &arguments, const CommandSetup &place = {}) const
    {
        return runCommand(program, QStringList{u"remove"_s} + arguments, place);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_cliRemove::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    for (const QString &name : {u"files/a"_s, u"files/b"_s, u"files/c"_s})
        writeFile(path(name), "content");
    qputenv("XDG_DATA_HOME", QFile::encodeName(path(u"data"_s)));
}

void tst_cliRemove::carriesOutAReportOfFind()
{
    const CommandRun found =
        runCommand(program, {u"find"_s, u"--keep"_s, u"first"_s, u"--format"_s, u"json"_s, u"--output"_s,
                                path(u"r"_s), path(u"files"_s)});
    QCOMPARE(found.exitCode, 0);
    const QStringList before = treeOf(path(u"files"_s));

    const CommandRun planned = remove({path(u"r"_s)});
    QCOMPARE(planned.exitCode, 0);
    QCOMPARE(planned.errors, QByteArray());
    QVERIFY(planned.output.contains("would trash: " + QFile::encodeName(path(u"files/b"_s)) + '\n'));
    QCOMPARE(treeOf(path(u"files"_s)), before);

    const CommandRun linked = remove({u"--apply"_s, u"--action"_s, u"hardlink"_s, path(u"r"_s)});
    QCOMPARE(linked.exitCode, 0);
    QCOMPARE(treeOf(path(u"files"_s)), before);
    const CommandRun refused = remove({path(u"r"_s)});
    QCOMPARE(refused.exitCode, 4);
    QVERIFY(refused.errors.startsWith("refused: " + QFile::encodeName(path(u"files/b"_s)) + ": "));
}

void tst_cliRemove::readsAReportFromStandardInput()
{
    const QByteArray json = toJson(reportOf({groupOf({path(u"files/a"_s), path(u"files/b"_s)})}));
    CommandSetup place;
    place.input = json;
    const QString action = hasTrash ? u"trash"_s : u"delete"_s;
    const CommandRun run =
        remove({u"--apply"_s, u"--action"_s, action, u"--journal"_s, path(u"j"_s), u"-"_s}, place);
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(treeOf(path(u"files"_s)), (QStringList{u"a: content"_s, u"c: content"_s}));
    QCOMPARE(contentOf(path(u"j"_s)).count('\n'), 2);
#ifndef Q_OS_WIN
    QCOMPARE(treeOf(path(u"data/Trash/files"_s)), QStringList{u"b: content"_s});
#endif
}

void tst_cliRemove::showsControlCharacters()
{
#ifdef Q_OS_WIN
    QSKIP("No such names here");
#endif
    const QString name = path(u"files/\u001b[31m\n"_s);
    writeFile(name, "content");
    writeFile(path(u"r"_s), toJson(reportOf({groupOf({path(u"files/a"_s), name})})));
    const CommandRun planned = remove({path(u"r"_s)});
    QVERIFY(
        planned.output.contains("would trash: " + QFile::encodeName(path(u"files/"_s)) + "\\x1b[31m\\n\n"));
    QVERIFY(QFile::remove(name));
    const CommandRun refused = remove({path(u"r"_s)});
    QVERIFY(refused.errors.contains("\\x1b[31m\\n: it is missing\n"));
}

void tst_cliRemove::refusesFilesThatAreNoReport_data()
{
    QTest::addColumn<QByteArray>("report");
    const QByteArray whole = toJson(reportOf({groupOf({u"/a"_s, u"/b"_s})}));
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("spaces") << QByteArray(100, ' ');
    QTest::newRow("text") << QByteArray("/a\n/b\n");
    QTest::newRow("truncated") << whole.first(whole.size() / 2);
    QTest::newRow("no report") << QByteArray("{}");
    QTest::newRow("list") << QByteArray("[]");
    QTest::newRow("later version") << QByteArray(whole).replace("report\": 1", "report\": 2");
    QTest::newRow("wrong type") << QByteArray(whole).replace("\"/b\"", "7");
    QTest::newRow("not text") << QByteArray(whole).replace("/b", "\xff\xfe");
}

void tst_cliRemove::refusesFilesThatAreNoReport()
{
    QFETCH(const QByteArray, report);
    writeFile(path(u"r"_s), report);
    CommandSetup place;
    place.input = report;
    for (const QString &name : {path(u"r"_s), u"-"_s}) {
        const CommandRun run = remove({u"--apply"_s, u"--action"_s, u"delete"_s, name}, place);
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(run.output, QByteArray());
        QCOMPARE(run.errors.count('\n'), 1);
        QVERIFY2(run.errors.startsWith("quillory-cli: cannot use the report "), run.errors.constData());
    }
    for (const QString &name : {path(u"missing"_s), path(u"files"_s), path(u"files/a/b"_s)}) {
        const CommandRun run = remove({name});
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(run.errors.count('\n'), 1);
    }
}

void tst_cliRemove::refusesAGigabyteOfGarbage_data()
{
    QTest::addColumn<QString>("script");
    QTest::newRow("sparse file") << u"truncate -s 1G \"$2\"; exec \"$1\" remove \"$2\""_s;
    QTest::newRow("zeros") << u"exec \"$1\" remove - < <(head -c 1G /dev/zero)"_s;
    QTest::newRow("spaces") << u"exec \"$1\" remove - < <(yes '' | head -c 1G)"_s;
    QTest::newRow("random") << u"exec \"$1\" remove - < <(head -c 1G /dev/urandom)"_s;
    QTest::newRow("random, like a report")
        << u"exec \"$1\" remove - < <(echo '{\"compared\": \"'; head -c 1G /dev/urandom)"_s;
    QTest::newRow("text, like a report")
        << u"exec \"$1\" remove - < <(echo '{\"compared\": \"bytes\", '; yes 'garbage' | head -c 1G)"_s;
}

void tst_cliRemove::refusesAGigabyteOfGarbage()
{
#ifdef Q_OS_WIN
    QSKIP("No shell here");
#endif
    QFETCH(const QString, script);
    // The limit is in kilobytes. Reading stops at half a gigabyte, but a parsed tree would take several.
    const CommandRun run = runScript(u"ulimit -v 2000000; "_s + script, {program, path(u"r"_s)});
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.errors.startsWith("quillory-cli: cannot use the report"), run.errors.constData());
}

void tst_cliRemove::refusesWrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("no report") << QStringList();
    QTest::newRow("two reports") << QStringList{u"a"_s, u"b"_s};
    QTest::newRow("unknown option") << QStringList{u"--aply"_s, u"a"_s};
    QTest::newRow("unknown action") << QStringList{u"--action"_s, u"shred"_s, u"a"_s};
    QTest::newRow("no journal") << QStringList{u"a"_s, u"--journal"_s};
}

void tst_cliRemove::refusesWrongUsage()
{
    QFETCH(const QStringList, arguments);
    const CommandRun run = remove(arguments);
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.errors.count('\n'), 1);
    QVERIFY2(run.errors.contains("remove --help"), run.errors.constData());
}

void tst_cliRemove::refusesTheReportAsJournal()
{
    const QByteArray json = toJson(reportOf({groupOf({path(u"files/a"_s), path(u"files/b"_s)})}));
    writeFile(path(u"r"_s), json);
    const CommandRun run = remove({u"--apply"_s, u"--journal"_s, path(u"./r"_s), path(u"r"_s)});
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.errors.endsWith(": it is the report\n"), run.errors.constData());
    QCOMPARE(contentOf(path(u"r"_s)), json);
    QCOMPARE(contentOf(path(u"files/b"_s)), "content");
}

void tst_cliRemove::stopsWhenItsOutputCannotBeWritten()
{
    if (!QFile::exists(u"/dev/full"_s))
        QSKIP("No full device here");
    writeFile(path(u"r"_s),
        toJson(reportOf({groupOf({path(u"files/a"_s), path(u"files/b"_s), path(u"files/c"_s)})})));
    CommandSetup place;
    place.outputFile = u"/dev/full"_s;
    const CommandRun run = remove({u"--apply"_s, u"--action"_s, u"delete"_s, path(u"r"_s)}, place);
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(treeOf(path(u"files"_s)), (QStringList{u"a: content"_s, u"c: content"_s}));
}

void tst_cliRemove::endsWhenInterruptedWhileItWaitsForAReport()
{
#ifdef Q_OS_WIN
    QSKIP("No such signals here");
#endif
    QVERIFY(makePipe(path(u"pipe"_s)));
    for (const QString &input : {u"-"_s, path(u"pipe"_s)}) {
        QProcess process;
        process.start(program, {u"remove"_s, input});
        QVERIFY(process.waitForStarted());
        // A signal that arrives before the handler is installed ends the program.
        do {
            process.terminate();
        } while (!process.waitForFinished(100));
        QVERIFY(process.exitStatus() == QProcess::CrashExit || process.exitCode() == 130);
    }
}

QTEST_GUILESS_MAIN(tst_cliRemove)
#include "tst_cliRemove.moc"
