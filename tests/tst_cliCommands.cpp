#include "tests/support/CliFolder.h"
#include "tests/support/HostileTree.h"

#include <QStandardPaths>
#include <QTest>

#include <memory>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// A shell function that waits until the process $1 sleeps. Returns soon on systems other than Linux.
const QString waitForSleep = u"waitForSleep() { for ((i = 0; i < 1000; ++i)); do "
                             "[[ $(<\"/proc/$1/stat\") == *') S '* ]] && return; done; } 2>/dev/null; "_s;

} // namespace

/// Commands, exit codes and interruption of quillory-cli.
class tst_cliCommands : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void printsVersionAndHelp_data();
    void printsVersionAndHelp();
    void refusesWrongUsageInOneLine_data();
    void refusesWrongUsageInOneLine();
    void reportsDuplicatesByItsExitCode();
    void printsUtf8InEveryLocale();
    void endsWhenInterrupted_data();
    void endsWhenInterrupted();
    void endsWhenInterruptedWhileOutputIsBlocked();
    void endsWhenInterruptedBeforeItsPipeHasAReader();
    void linksNoGraphicalLibrary();

private:
    std::unique_ptr<CliFolder> m_place;
};

void tst_cliCommands::init()
{
    m_place = std::make_unique<CliFolder>(QStringLiteral(QUILLORY_CLI), QStringList{u"a/1"_s, u"a/2"_s});
}

void tst_cliCommands::printsVersionAndHelp_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("start");
    QTest::addRow("version") << QStringList{u"--version"_s} << QByteArray("quillory-cli ");
    QTest::addRow("help") << QStringList{u"--help"_s} << QByteArray("Usage: quillory-cli find ");
    QTest::addRow("find") << QStringList{u"find"_s, u"--help"_s}
                          << QByteArray("Usage: quillory-cli find [OPTION]... FOLDER...\n");
    QTest::addRow("find, with others") << QStringList{u"find"_s, u"a"_s, u"--format=x"_s, u"--help"_s}
                                       << QByteArray("Usage: quillory-cli find ");
    QTest::addRow("remove") << QStringList{u"remove"_s, u"--help"_s}
                            << QByteArray("Usage: quillory-cli remove [OPTION]... REPORT\n");
}

void tst_cliCommands::printsVersionAndHelp()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, start);
    const CommandRun result = m_place->run(arguments);
    QVERIFY(result.output.startsWith(start));
    QVERIFY(result.output.endsWith('\n'));
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.exitCode, 0);
}

void tst_cliCommands::refusesWrongUsageInOneLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("line");
    const auto add = [](const char *name, const QStringList &arguments, const QByteArray &line) {
        QTest::addRow("%s", name) << arguments << "quillory-cli: " + line + '\n';
    };
    add("nothing", {}, "no command given: find or remove; see quillory-cli --help");
    add("unknown command", {u"fidn"_s, u"a"_s},
        "unknown command fidn (did you mean find?); see quillory-cli --help");
    add("nothing near", {u"scan"_s}, "unknown command scan; see quillory-cli --help");
    add("unknown option", {u"--versoin"_s},
        "unknown option --versoin (did you mean --version?); see quillory-cli --help");
    add("help without dashes", {u"help"_s},
        "unknown command help (did you mean --help?); see quillory-cli --help");
    add("unknown option of find", {u"find"_s, u"--hiden"_s, u"a"_s},
        "unknown option --hiden (did you mean --hidden?); see quillory-cli find --help");
    add("control characters", {u"find"_s, u"--x\n\x1b"_s, u"a"_s},
        "unknown option --x\\n\\x1b; see quillory-cli find --help");
    add("no folder", {u"find"_s}, "no FOLDER given; see quillory-cli find --help");
    add("unknown option of remove", {u"remove"_s, u"--aply"_s, u"a"_s},
        "unknown option --aply (did you mean --apply?); see quillory-cli remove --help");
}

void tst_cliCommands::refusesWrongUsageInOneLine()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, line);
    const CommandRun result = m_place->run(arguments);
    QCOMPARE(result.errors, line);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.exitCode, 2);
}

void tst_cliCommands::reportsDuplicatesByItsExitCode()
{
    const QString option = u"--fail-on-duplicates"_s;
    QCOMPARE(m_place->run({u"find"_s, u"a"_s}).exitCode, 0);
    QCOMPARE(m_place->run({u"find"_s, option, u"a"_s}).exitCode, 3);
    QCOMPARE(m_place->run({u"find"_s, option, u"--min-size=6"_s, u"a"_s}).exitCode, 0);
    QCOMPARE(m_place->run({u"find"_s, option, u"a"_s, u"missing"_s}).exitCode, 1);
    QCOMPARE(m_place->run({u"find"_s, option, u"a"_s, u"--nonsense"_s}).exitCode, 2);
}

void tst_cliCommands::printsUtf8InEveryLocale()
{
    m_place->write(u"\u00e4/\U0001F600"_s, "equal");
    const CommandRun result = m_place->run(
        {u"find"_s, u"--keep=first"_s, u"\u00e4"_s, u"a"_s, u"\u00f6"_s}, {u"LC_ALL=C"_s, u"LANG=C"_s});
    QVERIFY(result.output.contains("  keep   \xc3\xa4/\xf0\x9f\x98\x80\n"));
    QCOMPARE(result.errors.split(':').value(1), " cannot read \xc3\xb6");
}

void tst_cliCommands::endsWhenInterrupted_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addRow("Ctrl-C") << u"INT"_s;
    QTest::addRow("termination") << u"TERM"_s;
    QTest::addRow("closed terminal") << u"HUP"_s;
}

void tst_cliCommands::endsWhenInterrupted()
{
#ifdef Q_OS_WIN
    QSKIP("there are no signals");
#endif
    QFETCH(const QString, signal);
    // Comparing them would take hours.
    constexpr qint64 size = qint64(4) << 40;
    if (!writeSparseFile(m_place->path(u"a/large1"_s), size, {}) ||
        !writeSparseFile(m_place->path(u"a/large2"_s), size, {}))
        QSKIP("the file system has no files of this size");
    m_place->write(u"report"_s, "before");
    // Without job control the shell makes its children ignore Ctrl-C.
    const CommandRun result = m_place->runInShell(
        u"set -m; mkfifo errors; \"$1\" find a --progress always --output report 2>errors & "
        "exec 3<errors; until read -r -d of <&3; do :; done; kill -%1 $!; cat <&3 >/dev/null; wait $!"_s.arg(
            signal));
    QCOMPARE(result.exitCode, 130);
    QCOMPARE(m_place->content(u"report"_s), "before");
    QCOMPARE(m_place->fileNames(), QStringList{u"report"_s});
}

void tst_cliCommands::endsWhenInterruptedWhileOutputIsBlocked()
{
#ifdef Q_OS_WIN
    QSKIP("there are no signals");
#endif
    m_place->writeLargeOutput(u"many"_s);
    const CommandRun result = m_place->runInShell(
        waitForSleep + u"mkfifo output; \"$1\" find many --format csv >output & "
                       "exec 3<output; read -r -n 1 <&3; waitForSleep $!; kill -TERM $!; wait $!"_s);
    QCOMPARE(result.exitCode, 130);
    QVERIFY(result.errors.endsWith("quillory-cli: interrupted: the report is incomplete\n"));
}

void tst_cliCommands::endsWhenInterruptedBeforeItsPipeHasAReader()
{
#ifdef Q_OS_WIN
    QSKIP("there are no signals");
#endif
    // The progress line ends just before the program opens the pipe.
    const CommandRun result = m_place->runInShell(
        u"mkfifo output errors; \"$1\" find a --progress always --output output 2>errors & "
        "exec 3<errors; read -r <&3; waitForSleep $!; kill -TERM $!; wait $!"_s);
    QCOMPARE(result.exitCode, 130);
}

void tst_cliCommands::linksNoGraphicalLibrary()
{
    if (QStandardPaths::findExecutable(u"ldd"_s).isEmpty())
        QSKIP("there is no ldd");
    const CommandRun result = m_place->runInShell(u"ldd \"$1\""_s);
    QVERIFY(result.output.contains("libQt6Core"));
    for (const char *const library : {"Gui", "Widgets", "libX", "libxcb", "libGL", "libEGL"})
        QVERIFY2(!result.output.contains(library), library);
}

QTEST_GUILESS_MAIN(tst_cliCommands)
#include "tst_cliCommands.moc"
