#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int patience = 60'000;

struct Outcome
{
    int exitCode = -1;
    QStringList output;
    QStringList errors;
};

QStringList lines(const QByteArray &text)
{
    return QString::fromUtf8(text).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace

/// The scripts that people and the build server start: bad input, and the set-up on machines of every kind.
class tst_scripts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void refusesBadInput_data();
    void refusesBadInput();

    void installsNothingWhenNothingIsMissing();
    void installsOnlyWhatIsMissing();
    void fetchesTheListsOnlyWhenInstallingFails();
    void reportsAFailedInstallation();
    void reportsSystemsWithoutAPackageManager_data();
    void reportsSystemsWithoutAPackageManager();
    void installsNothingOnRequest();
    void passesFoldersToTheProgram();

private:
    [[nodiscard]] Outcome run(const QStringList &command, const QStringList &environment = {}) const;
    [[nodiscard]] Outcome setUp(const QStringList &environment = {}) const;
    [[nodiscard]] QStringList aptCalls() const;
    void addProgram(const char *name, const QByteArray &script) const;
    void removeProgram(const char *name) const;

    QTemporaryDir m_machine;
};

void tst_scripts::initTestCase()
{
    if (QStandardPaths::findExecutable(QStringLiteral("bash")).isEmpty())
        QSKIP("there is no bash to run the scripts");
}

/// A machine with root, nothing installed and an apt-get that installs everything.
void tst_scripts::init()
{
    QDir(m_machine.path()).removeRecursively();
    QVERIFY(QDir().mkpath(m_machine.filePath(QStringLiteral("bin"))));
    const QDir scripts(QStringLiteral(PROJECT_FOLDER "/tools"));
    QVERIFY(QDir().mkpath(m_machine.filePath(QStringLiteral("tools"))));
    for (const QString &name : {QStringLiteral("setup.sh"), QStringLiteral("packages.txt")})
        QVERIFY(QFile::copy(scripts.filePath(name), m_machine.filePath(QStringLiteral("tools/") + name)));

    const QStringList needed{QStringLiteral("bash"), QStringLiteral("awk"), QStringLiteral("grep"),
        QStringLiteral("env"), QStringLiteral("dirname"), QStringLiteral("mkdir"), QStringLiteral("paste"),
        QStringLiteral("uniq"), QStringLiteral("cat")};
    for (const QString &name : needed)
        QVERIFY(QFile::link(
            QStandardPaths::findExecutable(name), m_machine.filePath(QStringLiteral("bin/") + name)));
    addProgram("id", "echo 0");
    addProgram("dpkg-query", R"(grep -qxs -e "${@: -1}" "$MACHINE/installed" && echo installed)");
    addProgram("apt-get", R"(echo "$*" >>"$MACHINE/apt-calls")");
}

void tst_scripts::addProgram(const char *name, const QByteArray &script) const
{
    const QString path = m_machine.filePath(QStringLiteral("bin/") + QLatin1StringView(name));
    writeFile(path, "#!/usr/bin/env bash\n" + script + "\n");
    QVERIFY(QFile::setPermissions(
        path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner));
}

void tst_scripts::removeProgram(const char *name) const
{
    QVERIFY(QFile::remove(m_machine.filePath(QStringLiteral("bin/") + QLatin1StringView(name))));
}

Outcome tst_scripts::run(const QStringList &command, const QStringList &environment) const
{
    QProcess process;
    if (!environment.isEmpty())
        process.setEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(command.constFirst(), command.sliced(1));
    if (!process.waitForFinished(patience) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {
        process.exitCode(), lines(process.readAllStandardOutput()), lines(process.readAllStandardError())};
}

/// Runs the set-up for building, with nothing but the machine's own programs.
Outcome tst_scripts::setUp(const QStringList &environment) const
{
    const QStringList always{QStringLiteral("PATH=") + m_machine.filePath(QStringLiteral("bin")),
        QStringLiteral("MACHINE=") + m_machine.path()};
    return run({m_machine.filePath(QStringLiteral("bin/bash")),
                   m_machine.filePath(QStringLiteral("tools/setup.sh")), QStringLiteral("build")},
        always + environment);
}

QStringList tst_scripts::aptCalls() const
{
    QFile calls(m_machine.filePath(QStringLiteral("apt-calls")));
    return calls.open(QIODevice::ReadOnly) ? lines(calls.readAll()) : QStringList();
}

void tst_scripts::refusesBadInput_data()
{
    QTest::addColumn<QStringList>("command");
    const auto add =
        [](const char *name, const char *script, const QStringList &arguments) {
            QTest::addRow("%s", name)
                << QStringList{QStringLiteral(PROJECT_FOLDER "/") + QLatin1StringView(script)} + arguments;
        };
    add("run.sh, unknown argument", "run.sh", {QStringLiteral("--nonsense")});
    add("run.sh, no such folder", "run.sh", {QStringLiteral("/no/such/folder")});
    add("run.sh, a file", "run.sh", {QStringLiteral(PROJECT_FOLDER "/run.sh")});
    add("test.sh, a name", "test.sh", {QStringLiteral("endToEnd")});
    add("test.sh, unknown argument", "test.sh", {QStringLiteral("--nonsense")});
    add("test.sh, unknown letter", "test.sh", {QStringLiteral("-Y")});
    add("test.sh, empty argument", "test.sh", {QString()});
    add("test.sh, coverage of one test", "test.sh", {QStringLiteral("--coverage"), QStringLiteral("-R")});
    add("setup.sh, nothing", "tools/setup.sh", {});
    add("setup.sh, unknown purpose", "tools/setup.sh", {QStringLiteral("build"), QStringLiteral("nonsense")});
    add("build.sh, nothing", "tools/build.sh", {});
    add("build.sh, unknown preset", "tools/build.sh", {QStringLiteral("nonsense")});
    add("coverage.sh, an argument", "tools/coverage.sh", {QStringLiteral("nonsense")});
    add("with-display.sh, nothing", "tools/with-display.sh", {});
    const QString nonsense = QStringLiteral("--nonsense");
    add("smoke.sh, unknown argument", "bench/smoke.sh", {nonsense});
    add("compare.sh, unknown argument", "bench/compare.sh", {nonsense});
    add("compare.sh, no number of rounds", "bench/compare.sh", {QStringLiteral("--rounds")});
    add("compare.sh, no round", "bench/compare.sh", {QStringLiteral("--rounds"), QStringLiteral("0")});
    add("compare.sh, no number", "bench/compare.sh", {QStringLiteral("--cold-rounds"), nonsense});
    add("compare.sh, unknown part", "bench/compare.sh", {QStringLiteral("--only"), nonsense});
    add("compare.sh, no folder", "bench/compare.sh", {QStringLiteral("--corpus")});
    add("compare.sh, no such folder", "bench/compare.sh",
        {QStringLiteral("--corpus"), QStringLiteral("/no/such/folder")});
    add("compare.sh, output into nowhere", "bench/compare.sh",
        {QStringLiteral("--output"), QStringLiteral("/no/such/folder/benchmarks.md")});
    add("compare.sh, output that has no place for tables", "bench/compare.sh",
        {QStringLiteral("--output"), QStringLiteral(PROJECT_FOLDER "/README.md")});
    add("with-display.sh, no such command", "tools/with-display.sh", {QStringLiteral("/no/such/command")});
    add("sanitizers, unknown argument", "tools/sanitizers/run.sh", {QStringLiteral("--nonsense")});
    add("sanitizers, two names", "tools/sanitizers/run.sh", {QStringLiteral("a"), QStringLiteral("b")});
    add("Qt for ThreadSanitizer, unknown argument", "tools/sanitizers/build-qt-tsan.sh",
        {QStringLiteral("--nonsense")});
    add(".ci/run, unknown stage", ".ci/run", {QStringLiteral("nonsense")});
    add(".ci/run, unknown stage among others", ".ci/run",
        {QStringLiteral("scripts"), QStringLiteral("nonsense")});
    add("render.sh, an argument", "resources/art/render.sh", {QStringLiteral("nonsense")});
    add("fuzz/run.sh, no number", "tests/fuzz/run.sh", {QStringLiteral("nonsense")});
    add("fuzz/run.sh, two numbers", "tests/fuzz/run.sh", {QStringLiteral("1"), QStringLiteral("2")});

    const QString nowhere = QStringLiteral("/no/such/folder");
    add("start-and-close.sh, nothing", "packaging/start-and-close.sh", {});
    add("linux/build.sh, an argument", "packaging/linux/build.sh", {nowhere});
    add("linux/check.sh, unknown argument", "packaging/linux/check.sh", {QStringLiteral("--nonsense")});
    add("windows/build.sh, unknown argument", "packaging/windows/build.sh", {QStringLiteral("--nonsense")});
    add("build-qt.sh, unknown argument", "packaging/windows/build-qt.sh", {QStringLiteral("--nonsense")});
    add("add-libraries.sh, nothing", "packaging/windows/add-libraries.sh", {});
    add("add-libraries.sh, no such folder", "packaging/windows/add-libraries.sh", {nowhere, nowhere});
    add("add-licences.sh, nothing", "packaging/windows/add-licences.sh", {});
    add("add-licences.sh, no such folder", "packaging/windows/add-licences.sh", {nowhere, nowhere});
    add("check-zip.sh, nothing", "packaging/windows/check-zip.sh", {});
    add("check-zip.sh, no such file", "packaging/windows/check-zip.sh", {nowhere, QStringLiteral("1.0")});
    add("make-wine-prefix.sh, nothing", "packaging/windows/make-wine-prefix.sh", {});
    add("make-wine-prefix.sh, no such folder", "packaging/windows/make-wine-prefix.sh", {nowhere, nowhere});
    add("test-under-wine.sh, nothing", "packaging/windows/test-under-wine.sh", {});
    add("test-under-wine.sh, nothing built", "packaging/windows/test-under-wine.sh",
        {nowhere, nowhere, nowhere});
    add("wine.sh, nothing", "packaging/windows/wine.sh", {});
    add("wine.sh, no prefix", "packaging/windows/wine.sh", {nowhere, nowhere});
}

void tst_scripts::refusesBadInput()
{
    QFETCH(const QStringList, command);
    const Outcome outcome =
        run(command, QProcess::systemEnvironment() + QStringList{QStringLiteral("QUILLORY_NO_SETUP=1")});
    QVERIFY(outcome.exitCode > 0);
    QCOMPARE(outcome.errors.size(), 1);
    QCOMPARE(outcome.output, QStringList());
    QVERIFY(!QFile::exists(QStringLiteral("/no")));
}

void tst_scripts::installsNothingWhenNothingIsMissing()
{
    writeFile(m_machine.filePath(QStringLiteral("installed")),
        "g++\ncmake\nninja-build\nqt6-base-dev\nqt6-base-dev-tools\nlibssl-dev\n");
    const Outcome outcome = setUp();
    QCOMPARE(outcome.errors, QStringList());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QStringList());
    QCOMPARE(aptCalls(), QStringList());
}

void tst_scripts::installsOnlyWhatIsMissing()
{
    // Names that are part of another are not taken for it.
    writeFile(m_machine.filePath(QStringLiteral("installed")),
        "g++\nninja-build\nqt6-base-dev-tools\nlibssl-dev\n");
    const Outcome outcome = setUp();
    QCOMPARE(outcome.errors, QStringList());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output.size(), 1);
    QCOMPARE(aptCalls().size(), 1);
    QVERIFY(aptCalls().constFirst().contains(u" install "));
    QVERIFY(aptCalls().constFirst().endsWith(u" cmake qt6-base-dev"));
}

void tst_scripts::fetchesTheListsOnlyWhenInstallingFails()
{
    addProgram("apt-get",
        "echo \"$*\" >>\"$MACHINE/apt-calls\"\n"
        "case $* in *update*) echo >\"$MACHINE/lists\" ;; *) [ -e \"$MACHINE/lists\" ] ;; esac");
    const Outcome outcome = setUp();
    QCOMPARE(outcome.errors, QStringList());
    QCOMPARE(outcome.exitCode, 0);
    const QStringList calls = aptCalls();
    QCOMPARE(calls.size(), 3);
    QVERIFY(calls.at(1).endsWith(u" update"));
    QCOMPARE(calls.at(2), calls.at(0));
}

void tst_scripts::reportsAFailedInstallation()
{
    addProgram("apt-get", "echo 'no such package' >&2; exit 100");
    const Outcome outcome = setUp();
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.errors.size(), 1);
    QFile log(m_machine.filePath(QStringLiteral("build/setup.log")));
    QVERIFY(log.open(QIODevice::ReadOnly));
    QVERIFY(log.readAll().contains("no such package"));
    QVERIFY(outcome.errors.constFirst().contains(log.fileName()));
}

void tst_scripts::reportsSystemsWithoutAPackageManager_data()
{
    QTest::addColumn<QByteArray>("missing");
    QTest::addColumn<QByteArray>("user");
    QTest::addRow("no dpkg") << QByteArray("dpkg-query") << QByteArray("0");
    QTest::addRow("no apt-get") << QByteArray("apt-get") << QByteArray("0");
    QTest::addRow("neither root nor sudo") << QByteArray() << QByteArray("1000");
}

void tst_scripts::reportsSystemsWithoutAPackageManager()
{
    QFETCH(const QByteArray, missing);
    QFETCH(const QByteArray, user);
    if (!missing.isEmpty())
        removeProgram(missing.constData());
    addProgram("id", "echo " + user);
    const Outcome outcome = setUp();
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.errors.size(), 1);
    QVERIFY(outcome.errors.constFirst().contains(u"qt6-base-dev"));
    QCOMPARE(outcome.output, QStringList());
    QCOMPARE(aptCalls(), QStringList());
}

void tst_scripts::installsNothingOnRequest()
{
    const Outcome outcome = setUp({QStringLiteral("QUILLORY_NO_SETUP=1")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QStringList());
    QCOMPARE(aptCalls(), QStringList());
}

/// With a display; the programs that run.sh starts say how they were called.
void tst_scripts::passesFoldersToTheProgram()
{
    QVERIFY(
        QFile::copy(QStringLiteral(PROJECT_FOLDER "/run.sh"), m_machine.filePath(QStringLiteral("run.sh"))));
    QVERIFY(QDir(m_machine.path()).mkpath(QStringLiteral("a b")));
    for (const char *script : {"../tools/setup.sh", "../tools/build.sh", "../build/release/quillory"})
        addProgram(script, "echo ${0##*/} \"$@\"");
    const QString folder = QFileInfo(m_machine.filePath(QStringLiteral("a b"))).canonicalFilePath();

    const auto outcome = [this](const QStringList &folders) {
        return run(
            QStringList{QStringLiteral("bash"), m_machine.filePath(QStringLiteral("run.sh"))} + folders,
            QProcess::systemEnvironment() + QStringList{QStringLiteral("DISPLAY=:0")});
    };
    const Outcome withFolders = outcome({m_machine.filePath(QStringLiteral("a b/")), QStringLiteral("/")});
    const Outcome without = outcome({});

    QCOMPARE(withFolders.errors, QStringList());
    QCOMPARE(withFolders.output.last(), QStringLiteral("quillory %1 /").arg(folder));
    QCOMPARE(without.output.last(), QStringLiteral("quillory"));
}

QTEST_GUILESS_MAIN(tst_scripts)
#include "tst_scripts.moc"
