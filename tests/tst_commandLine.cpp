#include "app/CommandLine.h"

#include "tests/support/CommandRun.h"
#include "tests/support/TestFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_ba;
using Qt::StringLiterals::operator""_s;

namespace {

CommandLine parse(const QStringList &arguments)
{
    return parseCommandLine(QStringList{u"quillory"_s} + arguments);
}

/// Runs the program without a display, with \a variables added to its environment.
CommandRun start(const QStringList &arguments, const QStringList &variables = {})
{
    QStringList environment = QProcess::systemEnvironment();
    environment.removeIf([](const QString &variable) {
        const QString name = variable.section(u'=', 0, 0);
        return name == u"DISPLAY" || name == u"WAYLAND_DISPLAY" || name == u"QT_QPA_PLATFORM";
    });
    CommandRun run =
        runCommand(QStringLiteral(QUILLORY), arguments, {.environment = environment, .variables = variables});
    // Windows ends lines with CR LF.
    run.output.replace('\r', QByteArrayView());
    run.errors.replace('\r', QByteArrayView());
    return run;
}

} // namespace

/// The arguments of the program: as parsed, and as seen by a process without a display.
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

/// Makes a new folder the working folder: relative paths start there.
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
    QTest::newRow("working folder") << u"."_s << QString();
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

/// "link/.." is the parent of the target of the link, not the folder of the link.
void tst_commandLine::resolvesALinkBeforeItsParent()
{
#ifdef Q_OS_WIN
    QSKIP("Windows resolves '..' in the text of the path");
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
    QTest::newRow("no such folder between others")
        << QStringList{u"."_s, u"nowhere"_s, u"."_s} << u"nowhere"_s;
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
    QTest::addColumn<QByteArray>("begin");
    QTest::newRow("--help") << QStringList{u"--help"_s} << "Usage: quillory [OPTION]... [FOLDER]...\n"_ba;
    QTest::newRow("-h") << QStringList{u"-h"_s} << "Usage: "_ba;
    QTest::newRow("--help with a folder") << QStringList{u"nowhere"_s, u"--help"_s} << "Usage: "_ba;
    QTest::newRow("--version") << QStringList{u"--version"_s}
                               << QByteArrayLiteral("Quillory " PROGRAM_VERSION "\n");
    QTest::newRow("-v") << QStringList{u"-v"_s} << QByteArrayLiteral("Quillory " PROGRAM_VERSION "\n");
}

void tst_commandLine::printsHelpAndVersionWithoutADisplay()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, begin);
    const CommandRun run = start(arguments);
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.output.startsWith(begin), run.output.constData());
    QVERIFY(run.output.endsWith('\n'));
    QCOMPARE(run.errors, QByteArray());
}

void tst_commandLine::failsWithoutAWindow_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("no such folder") << QStringList{u"."_s, u"nowhere"_s}
                                    << "quillory: no such folder: nowhere\n"_ba;
    QTest::newRow("a file") << QStringList{u"file"_s} << "quillory: not a folder: file\n"_ba;
    QTest::newRow("unknown option") << QStringList{u"--nonsense"_s}
                                    << "quillory: Unknown option 'nonsense'. Try --help.\n"_ba;
}

void tst_commandLine::failsWithoutAWindow()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, error);
    const CommandRun run = start(arguments);
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(run.errors, error);
    QCOMPARE(run.output, QByteArray());
}

void tst_commandLine::opensTheWindowWithTheFolders()
{
#ifdef WINDOW_REPORT
    const QString folder = m_folder->filePath(u"inner folder"_s);
    const CommandRun run =
        start({u"-platform"_s, u"offscreen"_s, u"-plugin"_s, u"windowreport"_s, folder, u"."_s},
            {u"QT_PLUGIN_PATH="_s + QStringLiteral(WINDOW_REPORT)});
    QCOMPARE(linesIn(run.output), (QStringList{u"shown"_s, folder, m_folder->path()}));
    QCOMPARE(run.exitCode, 0);
#else
    QSKIP("The plugin that inspects the program is built for Linux only");
#endif
}

QTEST_GUILESS_MAIN(tst_commandLine)
#include "tst_commandLine.moc"
