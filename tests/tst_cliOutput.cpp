#include "tests/support/CliFolder.h"

#include <QFile>
#include <QStandardPaths>
#include <QTest>

#include <memory>

using Qt::Literals::StringLiterals::operator""_s;

/// Output of quillory-cli to files, devices, pipes and terminals, and failures to write.
class tst_cliOutput : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void writesAFileInsteadOfStandardOutput();
    void keepsTheOldFileWhenWritingFails_data();
    void keepsTheOldFileWhenWritingFails();
    void writesAFileCompletelyOrNotAtAll();
    void writesDevicesAsTheyAre();
    void reportsAFullStandardOutput();
    void reportsAClosedStandardOutput();
    void endsQuietlyWhenTheReaderCloses();
    void passesPathsToXargs();
    void coloursTerminalsOnly();
    void showsProgressOnRequest();
    void clearsProgressOnTerminals();

private:
    std::unique_ptr<CliFolder> m_place;
};

void tst_cliOutput::init()
{
    m_place = std::make_unique<CliFolder>(QStringLiteral(QUILLORY_CLI), QStringList{u"a/1"_s, u"a/2"_s});
}

void tst_cliOutput::writesAFileInsteadOfStandardOutput()
{
    for (const QString &format : {u"text"_s, u"csv"_s, u"paths"_s}) {
        const QStringList arguments{u"find"_s, u"--format"_s, format, u"a"_s};
        m_place->write(u"report"_s, "longer than every report of this test: " + QByteArray(2000, '.'));
        const CommandRun result = m_place->run(arguments + QStringList{u"--output"_s, u"report"_s});
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(m_place->content(u"report"_s), m_place->run(arguments).output);
        QCOMPARE(m_place->fileNames(), QStringList{u"report"_s});
    }
    QCOMPARE(
        m_place->run({u"find"_s, u"a"_s, u"--output=-"_s}).output, m_place->run({u"find"_s, u"a"_s}).output);
}

void tst_cliOutput::keepsTheOldFileWhenWritingFails_data()
{
    QTest::addColumn<QString>("file");
    QTest::addRow("no such folder") << u"missing/report"_s;
    QTest::addRow("a folder") << u"a"_s;
    QTest::addRow("a folder, with a slash") << u"missing/"_s;
    QTest::addRow("below a file") << u"a/1/report"_s;
}

void tst_cliOutput::keepsTheOldFileWhenWritingFails()
{
    QFETCH(const QString, file);
    const CommandRun result = m_place->run({u"find"_s, u"a"_s, u"--output"_s, file});
    QCOMPARE(result.errors.count('\n'), 1);
    QVERIFY(result.errors.startsWith("quillory-cli: cannot write " + file.toUtf8() + ": "));
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.exitCode, 1);
    QVERIFY(!QFile::exists(m_place->path(u"missing"_s)));
}

void tst_cliOutput::writesAFileCompletelyOrNotAtAll()
{
#ifdef Q_OS_WIN
    QSKIP("the size of files has no limit");
#endif
    m_place->writeLargeOutput(u"many"_s);
    m_place->write(u"report"_s, "before");
    const CommandRun result = m_place->runInShell(u"ulimit -f 10; \"$1\" find many --output report"_s);
    QCOMPARE(result.errors.count('\n'), 1);
    QVERIFY(result.errors.startsWith("quillory-cli: cannot write report: "));
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(m_place->content(u"report"_s), "before");
    QCOMPARE(m_place->fileNames(), QStringList{u"report"_s});
}

void tst_cliOutput::writesDevicesAsTheyAre()
{
    if (!QFile::exists(u"/dev/full"_s))
        QSKIP("there is no device that is always full");
    const CommandRun full = m_place->run({u"find"_s, u"a"_s, u"--output"_s, u"/dev/full"_s});
    QCOMPARE(full.errors, "quillory-cli: cannot write /dev/full: No space left on device\n");
    QCOMPARE(full.exitCode, 1);
    const CommandRun piped =
        m_place->runInShell(u"\"$1\" find a --format paths --keep first --output >(cat) | cat"_s);
    QCOMPARE(piped.output, "a/1\na/2\n");
}

void tst_cliOutput::reportsAFullStandardOutput()
{
    if (!QFile::exists(u"/dev/full"_s))
        QSKIP("there is no device that is always full");
    for (const QString &arguments : {u"find a"_s, u"--help"_s, u"find --help"_s, u"--version"_s}) {
        const CommandRun result = m_place->runInShell(u"\"$1\" "_s + arguments + u" >/dev/full"_s);
        QCOMPARE(result.errors, "quillory-cli: cannot write standard output: No space left on device\n");
        QCOMPARE(result.exitCode, 1);
    }
}

void tst_cliOutput::reportsAClosedStandardOutput()
{
#ifdef Q_OS_WIN
    QSKIP("needs a Unix shell");
#endif
    const CommandRun result = m_place->runInShell(u"\"$1\" find a >&-"_s);
    QCOMPARE(result.errors, "quillory-cli: cannot write standard output: Bad file descriptor\n");
    QCOMPARE(result.exitCode, 1);
}

void tst_cliOutput::endsQuietlyWhenTheReaderCloses()
{
#ifdef Q_OS_WIN
    QSKIP("needs a Unix shell");
#endif
    m_place->writeLargeOutput(u"many"_s);
    const CommandRun result =
        m_place->runInShell(u"\"$1\" find many --format csv | head -n 1; exit ${PIPESTATUS[0]}"_s);
    QCOMPARE(result.output, "group,size,action,path,modified,compared\r\n");
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.exitCode, 0);
}

void tst_cliOutput::passesPathsToXargs()
{
    if (QStandardPaths::findExecutable(u"xargs"_s).isEmpty())
        QSKIP("there is no xargs");
    m_place->write(u"a/with \"blank\nand line break'"_s, "equal");
    const CommandRun result = m_place->runInShell(u"\"$1\" find a --format paths --null | xargs -0 cat"_s);
    QCOMPARE(result.output, "equalequalequal");
    QCOMPARE(result.errors, QByteArray());
}

void tst_cliOutput::coloursTerminalsOnly()
{
    if (QStandardPaths::findExecutable(u"script"_s).isEmpty())
        QSKIP("there is no script to make a terminal");
    const QString onTerminal =
        u"TERM=xterm script -qec \"'$1' find a --progress never%1\" /dev/null </dev/null"_s;
    const CommandRun coloured = m_place->runInShell(onTerminal.arg(QString()));
    QVERIFY(coloured.output.contains("\x1b[32mkeep"));
    QVERIFY(!m_place->runInShell(u"NO_COLOR=1 "_s + onTerminal.arg(QString())).output.contains('\x1b'));
    QVERIFY(!m_place->runInShell(onTerminal.arg(u" | cat"_s)).output.contains('\x1b'));
    QVERIFY(!m_place->runInShell(onTerminal.arg(u" --format csv"_s)).output.contains('\x1b'));
    QVERIFY(!m_place->runInShell(onTerminal.arg(u" --output report; cat report"_s)).output.contains('\x1b'));
    QVERIFY(m_place->runInShell(u"NO_COLOR= "_s + onTerminal.arg(QString())).output.contains('\x1b'));
}

void tst_cliOutput::showsProgressOnRequest()
{
    const CommandRun quiet = m_place->run({u"find"_s, u"a"_s});
    QCOMPARE(quiet.errors, QByteArray());
    QCOMPARE(m_place->run({u"find"_s, u"a"_s, u"--progress=never"_s}).errors, QByteArray());
    const CommandRun shown = m_place->run({u"find"_s, u"a"_s, u"--progress=always"_s});
    QVERIFY(shown.errors.contains("100%  10 B of 10 B  2 files  0:00 left"));
    QVERIFY(shown.errors.endsWith('\n'));
    QCOMPARE(shown.output, quiet.output);
    const CommandRun alone = m_place->run({u"find"_s, u"a"_s, u"--progress=always"_s, u"--exclude=1"_s});
    QVERIFY(alone.errors.contains("100%  0 B of 0 B  1 file  0:00 left"));
    QCOMPARE(shown.exitCode, 0);
}

void tst_cliOutput::clearsProgressOnTerminals()
{
    if (QStandardPaths::findExecutable(u"script"_s).isEmpty())
        QSKIP("there is no script to make a terminal");
    // Standard error is the terminal, standard output is not.
    const CommandRun result = m_place->runInShell(
        u"script -qec \"stty cols 40; '$1' find /usr/include >report\" /dev/null </dev/null"_s);
    for (const QByteArray &line : result.output.split('\r'))
        QVERIFY2(line.size() < 40, line.constData());
    QVERIFY(!result.output.contains('\n'));
    if (!result.output.isEmpty())
        QVERIFY(result.output.sliced(result.output.lastIndexOf('\r', -2)).trimmed().isEmpty());
}

QTEST_GUILESS_MAIN(tst_cliOutput)
#include "tst_cliOutput.moc"
