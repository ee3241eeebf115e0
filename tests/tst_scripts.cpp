#include "tests/support/CommandRun.h"

#include <QFile>
#include <QStandardPaths>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

const auto nonsense = u"--nonsense"_s;
const auto nowhere = u"/no/such/folder"_s;

void add(const char *name, const char *script, const QStringList &arguments)
{
    QTest::newRow(name) << QStringLiteral(PROJECT_FOLDER "/") + QLatin1StringView(script) << arguments;
}

void addMainScripts()
{
    add("run.sh, unknown argument", "run.sh", {nonsense});
    add("run.sh, no such folder", "run.sh", {nowhere});
    add("run.sh, a file", "run.sh", {QStringLiteral(PROJECT_FOLDER "/run.sh")});
    add("test.sh, a name", "test.sh", {u"endToEnd"_s});
    add("test.sh, unknown argument", "test.sh", {nonsense});
    add("test.sh, unknown letter", "test.sh", {u"-Y"_s});
    add("test.sh, empty argument", "test.sh", {QString()});
    add("test.sh, coverage of one test", "test.sh", {u"--coverage"_s, u"-R"_s});
}

void addTools()
{
    add("setup.sh, nothing", "tools/setup.sh", {});
    add("setup.sh, unknown purpose", "tools/setup.sh", {u"build"_s, u"nonsense"_s});
    add("build.sh, nothing", "tools/build.sh", {});
    add("build.sh, unknown preset", "tools/build.sh", {u"nonsense"_s});
    add("coverage.sh, an argument", "tools/coverage.sh", {u"nonsense"_s});
    add("with-display.sh, nothing", "tools/with-display.sh", {});
    add("with-display.sh, no such command", "tools/with-display.sh", {u"/no/such/command"_s});
    add("sanitizers, unknown argument", "tools/sanitizers/run.sh", {nonsense});
    add("sanitizers, two names", "tools/sanitizers/run.sh", {u"a"_s, u"b"_s});
    add("Qt for ThreadSanitizer, unknown argument", "tools/sanitizers/build-qt-tsan.sh", {nonsense});
    add(".ci/run, unknown stage", ".ci/run", {u"nonsense"_s});
    add(".ci/run, unknown stage among others", ".ci/run", {u"scripts"_s, u"nonsense"_s});
    add("render.sh, an argument", "resources/art/render.sh", {u"nonsense"_s});
    add("fuzz/run.sh, no number", "tests/fuzz/run.sh", {u"nonsense"_s});
    add("fuzz/run.sh, two numbers", "tests/fuzz/run.sh", {u"1"_s, u"2"_s});
}

void addBenchmarkScripts()
{
    add("smoke.sh, unknown argument", "bench/smoke.sh", {nonsense});
    add("compare.sh, unknown argument", "bench/compare.sh", {nonsense});
    add("compare.sh, no number of rounds", "bench/compare.sh", {u"--rounds"_s});
    add("compare.sh, no round", "bench/compare.sh", {u"--rounds"_s, u"0"_s});
    add("compare.sh, no number", "bench/compare.sh", {u"--cold-rounds"_s, nonsense});
    add("compare.sh, unknown part", "bench/compare.sh", {u"--only"_s, nonsense});
    add("compare.sh, no folder", "bench/compare.sh", {u"--corpus"_s});
    add("compare.sh, no such folder", "bench/compare.sh", {u"--corpus"_s, nowhere});
    add("compare.sh, output into nowhere", "bench/compare.sh",
        {u"--output"_s, u"/no/such/folder/benchmarks.md"_s});
    add("compare.sh, output that has no place for tables", "bench/compare.sh",
        {u"--output"_s, QStringLiteral(PROJECT_FOLDER "/README.md")});
}

void addPackagingScripts()
{
    add("start-and-close.sh, nothing", "packaging/start-and-close.sh", {});
    add("linux/build.sh, an argument", "packaging/linux/build.sh", {nowhere});
    add("linux/check.sh, unknown argument", "packaging/linux/check.sh", {nonsense});
    add("windows/build.sh, unknown argument", "packaging/windows/build.sh", {nonsense});
    add("build-qt.sh, unknown argument", "packaging/windows/build-qt.sh", {nonsense});
    add("add-libraries.sh, nothing", "packaging/windows/add-libraries.sh", {});
    add("add-libraries.sh, no such folder", "packaging/windows/add-libraries.sh", {nowhere, nowhere});
    add("add-licences.sh, nothing", "packaging/windows/add-licences.sh", {});
    add("add-licences.sh, no such folder", "packaging/windows/add-licences.sh", {nowhere, nowhere});
    add("check-zip.sh, nothing", "packaging/windows/check-zip.sh", {});
    add("check-zip.sh, no such file", "packaging/windows/check-zip.sh", {nowhere, u"1.0"_s});
    add("make-wine-prefix.sh, nothing", "packaging/windows/make-wine-prefix.sh", {});
    add("make-wine-prefix.sh, no such folder", "packaging/windows/make-wine-prefix.sh", {nowhere, nowhere});
    add("test-under-wine.sh, nothing", "packaging/windows/test-under-wine.sh", {});
    add("test-under-wine.sh, nothing built", "packaging/windows/test-under-wine.sh",
        {nowhere, nowhere, nowhere});
    add("wine.sh, nothing", "packaging/windows/wine.sh", {});
    add("wine.sh, no prefix", "packaging/windows/wine.sh", {nowhere, nowhere});
}

} // namespace

/// The scripts refuse bad input with an exit code and a message of one line, and do nothing.
class tst_scripts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void refusesBadInput_data();
    void refusesBadInput();
};

void tst_scripts::initTestCase()
{
    if (QStandardPaths::findExecutable(u"bash"_s).isEmpty())
        QSKIP("bash is not installed");
}

void tst_scripts::refusesBadInput_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QStringList>("arguments");
    addMainScripts();
    addTools();
    addBenchmarkScripts();
    addPackagingScripts();
}

void tst_scripts::refusesBadInput()
{
    QFETCH(const QString, script);
    QFETCH(const QStringList, arguments);
    const CommandRun run = runCommand(script, arguments, {.variables = {u"QUILLORY_NO_SETUP=1"_s}});
    QVERIFY(run.exitCode > 0);
    QCOMPARE(linesIn(run.errors).size(), 1);
    QCOMPARE(run.output, QByteArray());
    QVERIFY(!QFile::exists(u"/no"_s));
}

QTEST_GUILESS_MAIN(tst_scripts)
#include "tst_scripts.moc"
