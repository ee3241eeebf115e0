#include "app/CommandLine.h"

#include "tests/support/TestFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int patienceMilliseconds = 120'000;

struct Outcome
{
    int exitCode = -1;
    QString output;
    QString errors;
};

CommandLine parse(const QStringList &arguments)
{
    return parseCommandLine(QStringList{u"quillory"_s} + arguments);
}

/// Runs the program. The \a environment is added to one that knows no display.
Outcome start(const QStringList &arguments, const QStringList &environment = {})
{
    QProcess program;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        variables.remove(QLatin1StringView(name));
    for (const QString &each : environment)
        variables.insert(each.section(u'=', 0, 0), each.section(u'=', 1));
    program.setProcessEnvironment(variables);
    program.start(QStringLiteral(QUILLORY), arguments);
    if (!program.waitForFinished(patienceMilliseconds) || program.exitStatus() != QProcess::NormalExit) {
        program.kill();
        program.waitForFinished();
        return {};
    }
    // Windows ends lines with two characters.
    return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()).remove(u'\r'),
        QString::fromUtf8(program.readAllStandardError()).remove(u'\r')};
}

} // namespace

/// What the program makes of its arguments: by call, and as a process without a display.
class tst_commandLine : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void listsTheVolumesWithoutArguments();
    void writesFoldersAsTheDialogDoes_data();
    void writesFoldersAsTheDialogDoes();
    void keepsOrderAndRepetition();
    void resolvesALinkBeforeItsParent();
    void acceptsFoldersThatBeginWithADash();
    void refusesWrongArguments_data();
    void refusesWrongArguments();
    void keepsAnErrorOnOneLine();
    void passesQtOptionsToQt_data();
    void passesQtOptionsToQt();

    void printsHelpAndVersionWithoutADisplay_data();
    void printsHelpAndVersionWithoutADisplay();
    void failsWithoutAWindow_data();
    void failsWithoutAWindow();
    void opensTheWindowWithTheFolders();

private:
    QScopedPointer<QTemporaryDir> m_folder;
};

/// A folder of its own for each test, which is the current one: relative paths start there.
void tst_commandLine::init()
{
    QDir::setCurrent(QCoreApplication::applicationDirPath());
    m_folder.reset(new QTemporaryDir(QDir(QDir::tempPath()).canonicalPath() + u"/quillory-XXXXXX"_s));
    QVERIFY(QDir(m_folder->path()).mkpath(u"inner folder/deep"_s));
    writeFile(m_folder->filePath(u"file"_s), "content");
    QVERIFY(QDir::setCurrent(m_folder->path()));
}

void tst_commandLine::listsTheVolumesWithoutArguments()
{
    const CommandLine commandLine = parse({});
    QCOMPARE(commandLine.folders, QStringList());
    QVERIFY(!commandLine.answer);
    QVERIFY(!commandLine.error);
}

void tst_commandLine::writesFoldersAsTheDialogDoes_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QString>("below");
    QTest::newRow("relative") << u"inner folder"_s << u"/inner folder"_s;
    QTest::newRow("slash at the end") << u"inner folder/"_s << u"/inner folder"_s;
    QTest::newRow("slashes at the end") << u"inner folder/deep//"_s << u"/inner folder/deep"_s;
    QTest::newRow("the current one") << u"."_s << QString();
    QTest::newRow("up and down") << u"inner folder/../inner folder/./deep"_s << u"/inner folder/deep"_s;
}

void tst_commandLine::writesFoldersAsTheDialogDoes()
{
    QFETCH(const QString, argument);
    QFETCH(const QString, below);
    const QStringList expected{m_folder->path() + below};
    QCOMPARE(parse({argument}).folders, expected);
    QCOMPARE(parse({m_folder->path() + u'/' + argument}).folders, expected);
    QCOMPARE(parse({QDir::rootPath()}).folders, QStringList{QDir::rootPath()});
}

void tst_commandLine::keepsOrderAndRepetition()
{
    const QString outer = m_folder->path();
    const QString inner = m_folder->filePath(u"inner folder"_s);
    QCOMPARE(parse({inner, outer, inner}).folders, (QStringList{inner, outer, inner}));
}

/// The text "link/.." suggests the folder of the link; the system means the parent of the link's target.
void tst_commandLine::resolvesALinkBeforeItsParent()
{
#ifdef Q_OS_WIN
    QSKIP("Windows resolves '..' in the text, too");
#endif
    const QString link = m_folder->filePath(u"link"_s);
    QVERIFY(QFile::link(m_folder->filePath(u"inner folder/deep"_s), link));
    QCOMPARE(parse({u"link"_s}).folders, QStringList{link});
    QCOMPARE(parse({u"link/.."_s}).folders, QStringList{m_folder->filePath(u"inner folder"_s)});
}

void tst_commandLine::acceptsFoldersThatBeginWithADash()
{
    QVERIFY(QDir(m_folder->path()).mkpath(u"--help"_s));
    QCOMPARE(parse({u"--"_s, u"--help"_s}).folders, QStringList{m_folder->filePath(u"--help"_s)});
}

void tst_commandLine::refusesWrongArguments_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("named");
    QTest::newRow("unknown option") << QStringList{u"--nonsense"_s} << u"nonsense"_s;
    QTest::newRow("unknown option beside a folder") << QStringList{u"."_s, u"-x"_s} << u"x"_s;
    QTest::newRow("value missing") << QStringList{u"-style"_s} << u"style"_s;
    QTest::newRow("no such folder") << QStringList{u"nowhere"_s} << u"no such folder: nowhere"_s;
    QTest::newRow("no such folder among others") << QStringList{u"."_s, u"nowhere"_s, u"."_s} << u"nowhere"_s;
    QTest::newRow("a file") << QStringList{u"file"_s} << u"not a folder: file"_s;
    QTest::newRow("nothing") << QStringList{QString()} << u"no such folder: "_s;
}

void tst_commandLine::refusesWrongArguments()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, named);
    const CommandLine commandLine = parse(arguments);
    QVERIFY(commandLine.error);
    QVERIFY2(commandLine.error->contains(named), qPrintable(*commandLine.error));
    QVERIFY(!commandLine.answer);
}

void tst_commandLine::keepsAnErrorOnOneLine()
{
    QCOMPARE(parse({u"two\nlines\r\x7f"_s}).error, u"no such folder: two?lines??"_s);
    QVERIFY(!parse({u"--two\nlines"_s}).error->contains(u'\n'));
}

void tst_commandLine::passesQtOptionsToQt_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("value apart") << QStringList{u"-style"_s, u"fusion"_s};
    QTest::newRow("value attached") << QStringList{u"-style=fusion"_s};
    QTest::newRow("two dashes") << QStringList{u"--platform"_s, u"offscreen"_s};
    QTest::newRow("session") << QStringList{u"-session"_s, u"abc_123"_s};
    QTest::newRow("no value") << QStringList{u"-reverse"_s};
}

void tst_commandLine::passesQtOptionsToQt()
{
    QFETCH(const QStringList, options);
    const QStringList folders{m_folder->path()};
    for (const CommandLine &commandLine : {parse(options + folders), parse(folders + options)}) {
        QCOMPARE(commandLine.error.value_or(QString()), QString());
        QCOMPARE(commandLine.folders, folders);
    }
}

void tst_commandLine::printsHelpAndVersionWithoutADisplay_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("begin");
    QTest::newRow("--help") << QStringList{u"--help"_s} << u"Usage: quillory [OPTION]... [FOLDER]...\n"_s;
    QTest::newRow("-h") << QStringList{u"-h"_s} << u"Usage: "_s;
    QTest::newRow("--help with a folder") << QStringList{u"nowhere"_s, u"--help"_s} << u"Usage: "_s;
    QTest::newRow("--version") << QStringList{u"--version"_s}
                               << QStringLiteral("Quillory " PROGRAM_VERSION "\n");
    QTest::newRow("-v") << QStringList{u"-v"_s} << QStringLiteral("Quillory " PROGRAM_VERSION "\n");
}

void tst_commandLine::printsHelpAndVersionWithoutADisplay()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, begin);
    const Outcome outcome = start(arguments);
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.output.startsWith(begin), qPrintable(outcome.output));
    QVERIFY(outcome.output.endsWith(u'\n'));
    QCOMPARE(outcome.errors, QString());
}

void tst_commandLine::failsWithoutAWindow_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    QTest::newRow("no such folder") << QStringList{u"."_s, u"nowhere"_s}
                                    << u"quillory: no such folder: nowhere\n"_s;
    QTest::newRow("a file") << QStringList{u"file"_s} << u"quillory: not a folder: file\n"_s;
    QTest::newRow("unknown option") << QStringList{u"--nonsense"_s}
                                    << u"quillory: Unknown option 'nonsense'. Try --help.\n"_s;
}

void tst_commandLine::failsWithoutAWindow()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, error);
    const Outcome outcome = start(arguments);
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.errors, error);
    QCOMPARE(outcome.output, QString());
}

void tst_commandLine::opensTheWindowWithTheFolders()
{
#ifdef WINDOW_REPORT
    const QString folder = m_folder->filePath(u"inner folder"_s);
    const Outcome outcome =
        start({u"-platform"_s, u"offscreen"_s, u"-plugin"_s, u"windowreport"_s, folder, u"."_s},
            {u"QT_PLUGIN_PATH="_s + QStringLiteral(WINDOW_REPORT)});
    QCOMPARE(
        outcome.output.split(u'\n', Qt::SkipEmptyParts), (QStringList{u"shown"_s, folder, m_folder->path()}));
    QCOMPARE(outcome.exitCode, 0);
#else
    QSKIP("The plugin that looks into the program is built for Linux only");
#endif
}

QTEST_GUILESS_MAIN(tst_commandLine)
#include "tst_commandLine.moc"
