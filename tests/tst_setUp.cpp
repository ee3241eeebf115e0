#include "tests/support/CommandRun.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

/// Setting up different machines, and starting the program on them.
class tst_setUp : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void installsNothingWhenNothingIsMissing();
    void installsOnlyWhatIsMissing();
    void fetchesTheListsOnlyWhenInstallingFails();
    void reportsAFailedInstallation();
    void reportsSystemsWithoutAPackageManager_data();
    void reportsSystemsWithoutAPackageManager();
    void installsNothingOnRequest();
    void passesFoldersToTheProgram();

private:
    [[nodiscard]] CommandRun setUp(const QStringList &variables = {}) const;
    [[nodiscard]] QStringList aptCalls() const;
    void addProgram(const char *name, const QByteArray &script) const;
    void removeProgram(const char *name) const;

    QTemporaryDir m_machine;
};

void tst_setUp::initTestCase()
{
    if (QStandardPaths::findExecutable(u"bash"_s).isEmpty())
        QSKIP("bash is not installed");
}

/// Creates a machine with root access, no packages and an apt-get that always succeeds.
void tst_setUp::init()
{
    QDir(m_machine.path()).removeRecursively();
    QVERIFY(QDir().mkpath(m_machine.filePath(u"bin"_s)));
    const QDir scripts(QStringLiteral(PROJECT_FOLDER "/tools"));
    QVERIFY(QDir().mkpath(m_machine.filePath(u"tools"_s)));
    for (const QString &name : {u"setup.sh"_s, u"packages.txt"_s})
        QVERIFY(QFile::copy(scripts.filePath(name), m_machine.filePath(u"tools/"_s + name)));

    const QStringList needed{
        u"bash"_s, u"awk"_s, u"grep"_s, u"env"_s, u"dirname"_s, u"mkdir"_s, u"paste"_s, u"uniq"_s, u"cat"_s};
    for (const QString &name : needed)
        QVERIFY(QFile::link(QStandardPaths::findExecutable(name), m_machine.filePath(u"bin/"_s + name)));
    addProgram("id", "echo 0");
    addProgram("dpkg-query", R"(grep -qxs -e "${@: -1}" "$MACHINE/installed" && echo installed)");
    addProgram("apt-get", R"(echo "$*" >>"$MACHINE/apt-calls")");
}

void tst_setUp::addProgram(const char *name, const QByteArray &script) const
{
    const QString path = m_machine.filePath(u"bin/"_s + QLatin1StringView(name));
    writeFile(path, "#!/usr/bin/env bash\n" + script + "\n");
    QVERIFY(QFile::setPermissions(
        path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner));
}

void tst_setUp::removeProgram(const char *name) const
{
    QVERIFY(QFile::remove(m_machine.filePath(u"bin/"_s + QLatin1StringView(name))));
}

/// Runs the set-up for building. Only the programs of the machine are in PATH.
CommandRun tst_setUp::setUp(const QStringList &variables) const
{
    const QStringList always{u"PATH="_s + m_machine.filePath(u"bin"_s), u"MACHINE="_s + m_machine.path()};
    return runCommand(m_machine.filePath(u"bin/bash"_s),
        {m_machine.filePath(u"tools/setup.sh"_s), u"build"_s}, {.environment = always + variables});
}

QStringList tst_setUp::aptCalls() const
{
    QFile calls(m_machine.filePath(u"apt-calls"_s));
    return calls.open(QIODevice::ReadOnly) ? linesIn(calls.readAll()) : QStringList();
}

void tst_setUp::installsNothingWhenNothingIsMissing()
{
    writeFile(m_machine.filePath(u"installed"_s),
        "g++\ncmake\nninja-build\nqt6-base-dev\nqt6-base-dev-tools\nlibssl-dev\n");
    const CommandRun outcome = setUp();
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(aptCalls(), QStringList());
}

void tst_setUp::installsOnlyWhatIsMissing()
{
    // A package must not count as installed because its name is part of another one.
    writeFile(m_machine.filePath(u"installed"_s), "g++\nninja-build\nqt6-base-dev-tools\nlibssl-dev\n");
    const CommandRun outcome = setUp();
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(linesIn(outcome.output).size(), 1);
    QCOMPARE(aptCalls().size(), 1);
    QVERIFY(aptCalls().constFirst().contains(u" install "));
    QVERIFY(aptCalls().constFirst().endsWith(u" cmake qt6-base-dev"));
}

void tst_setUp::fetchesTheListsOnlyWhenInstallingFails()
{
    addProgram("apt-get",
        "echo \"$*\" >>\"$MACHINE/apt-calls\"\n"
        "case $* in *update*) echo >\"$MACHINE/lists\" ;; *) [ -e \"$MACHINE/lists\" ] ;; esac");
    const CommandRun outcome = setUp();
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.exitCode, 0);
    const QStringList calls = aptCalls();
    QCOMPARE(calls.size(), 3);
    QVERIFY(calls.at(1).endsWith(u" update"));
    QCOMPARE(calls.at(2), calls.at(0));
}

void tst_setUp::reportsAFailedInstallation()
{
    addProgram("apt-get", "echo 'no such package' >&2; exit 100");
    const CommandRun outcome = setUp();
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(linesIn(outcome.errors).size(), 1);
    QFile log(m_machine.filePath(u"build/setup.log"_s));
    QVERIFY(log.open(QIODevice::ReadOnly));
    QVERIFY(log.readAll().contains("no such package"));
    QVERIFY(QString::fromUtf8(outcome.errors).contains(log.fileName()));
}

void tst_setUp::reportsSystemsWithoutAPackageManager_data()
{
    QTest::addColumn<QByteArray>("missing");
    QTest::addColumn<QByteArray>("user");
    QTest::addRow("no dpkg") << QByteArray("dpkg-query") << QByteArray("0");
    QTest::addRow("no apt-get") << QByteArray("apt-get") << QByteArray("0");
    QTest::addRow("neither root nor sudo") << QByteArray() << QByteArray("1000");
}

void tst_setUp::reportsSystemsWithoutAPackageManager()
{
    QFETCH(const QByteArray, missing);
    QFETCH(const QByteArray, user);
    if (!missing.isEmpty())
        removeProgram(missing.constData());
    addProgram("id", "echo " + user);
    const CommandRun outcome = setUp();
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(linesIn(outcome.errors).size(), 1);
    QVERIFY(outcome.errors.contains("qt6-base-dev"));
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(aptCalls(), QStringList());
}

void tst_setUp::installsNothingOnRequest()
{
    const CommandRun outcome = setUp({u"QUILLORY_NO_SETUP=1"_s});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(aptCalls(), QStringList());
}

/// The programs that run.sh starts print their arguments. A display is set, so run.sh starts the window
/// itself.
void tst_setUp::passesFoldersToTheProgram()
{
    QVERIFY(QFile::copy(QStringLiteral(PROJECT_FOLDER "/run.sh"), m_machine.filePath(u"run.sh"_s)));
    QVERIFY(QDir(m_machine.path()).mkpath(u"a b"_s));
    for (const char *script : {"../tools/setup.sh", "../tools/build.sh", "../build/release/quillory"})
        addProgram(script, "echo ${0##*/} \"$@\"");
    const QString folder = QFileInfo(m_machine.filePath(u"a b"_s)).canonicalFilePath();

    const auto outcome = [this](const QStringList &folders) {
        return runCommand(u"bash"_s, QStringList{m_machine.filePath(u"run.sh"_s)} + folders,
            {.variables = {u"DISPLAY=:0"_s}});
    };
    const CommandRun withFolders = outcome({m_machine.filePath(u"a b/"_s), u"/"_s});
    const CommandRun without = outcome({});

    QCOMPARE(withFolders.errors, QByteArray());
    QCOMPARE(linesIn(withFolders.output).last(), u"quillory %1 /"_s.arg(folder));
    QCOMPARE(linesIn(without.output).last(), u"quillory"_s);
}

QTEST_GUILESS_MAIN(tst_setUp)
#include "tst_setUp.moc"
