#include "cli/Find.h"
#include "cli/Remove.h"
#include "tests/support/CommandRun.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

QString fileText(const QString &name)
{
    QFile file(QStringLiteral(PROJECT_FOLDER "/packaging/") + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// What \a expression captures in \a text, sorted, each once.
QStringList captures(const QString &text, const QString &expression)
{
    const QRegularExpression pattern(expression, QRegularExpression::MultilineOption);
    QStringList found;
    for (const QRegularExpressionMatch &match : pattern.globalMatch(text))
        found.append(match.captured(1));
    found.removeDuplicates();
    found.sort();
    return found;
}

/// The options in the help of \a command, with dashes.
QStringList helpedOptions(const CommandDescription &command)
{
    return captures(helpText(command), u"^  (--[a-z-]+)"_s);
}

/// The part of \a text from \a start to \a end; empty if there is no \a start.
QString section(const QString &text, const QString &start, const QString &end)
{
    const qsizetype from = text.indexOf(start);
    return from < 0 ? QString() : text.sliced(from, text.indexOf(end, from) - from);
}

/// The words that bash offers for the last of \a words.
QStringList offeredByBash(const QStringList &words)
{
    const QString script = u"source \"$1\"; shift; COMP_WORDS=(quillory-cli \"$@\"); COMP_CWORD=$#; "
                           "_quillory_cli; printf '%s\\n' \"${COMPREPLY[@]}\""_s;
    const CommandRun run = runScript(script,
        QStringList{QStringLiteral(PROJECT_FOLDER "/packaging/completions/quillory-cli.bash")} + words);
    QStringList offered = QString::fromUtf8(run.output).split(u'\n', Qt::SkipEmptyParts);
    offered.sort();
    return offered;
}

/// The words that fish offers for the last of \a words.
QStringList offeredByFish(const QStringList &words)
{
    const QString script = u"source $argv[1]; complete -C $argv[2]"_s;
    const CommandRun run =
        runCommand(u"fish"_s, {u"--no-config"_s, u"-c"_s, script,
                                  QStringLiteral(PROJECT_FOLDER "/packaging/completions/quillory-cli.fish"),
                                  u"quillory-cli "_s + words.join(u' ')});
    return captures(QString::fromUtf8(run.output), u"^([^\\t\\n]+)"_s);
}

bool hasProgram(const QString &name)
{
    return !QStandardPaths::findExecutable(name).isEmpty();
}

} // namespace

/// The completions and the manual page have exactly the options of the help.
class tst_cliCompletions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void haveTheOptionsOfTheHelp_data();
    void haveTheOptionsOfTheHelp();
    void haveTheWordsOfEachOption_data();
    void haveTheWordsOfEachOption();
    void offerCommands();
    void offerTheNextWordOfAList();
    void areValidScripts();
};

void tst_cliCompletions::initTestCase()
{
    if (!QFileInfo::exists(QStringLiteral(PROJECT_FOLDER)))
        QSKIP("The project's files are not on this machine");
}

void tst_cliCompletions::haveTheOptionsOfTheHelp_data()
{
    QTest::addColumn<QStringList>("help");
    QTest::addColumn<QString>("command");
    for (const CommandDescription &command : {findCommand(), removeCommand()})
        QTest::addRow("%s", qPrintable(command.name)) << helpedOptions(command) << command.name;
}

void tst_cliCompletions::haveTheOptionsOfTheHelp()
{
    QFETCH(const QStringList, help);
    QFETCH(const QString, command);
    QVERIFY(help.contains(u"--help"_s));

    const QString zsh =
        section(fileText(u"completions/_quillory-cli"_s), u"_quillory_cli_"_s + command + u"()"_s, u"\n}"_s);
    QCOMPARE(captures(zsh, u"'\\*?(--[a-z-]+)"_s), help);
    const QString fish = fileText(u"completions/quillory-cli.fish"_s);
    QStringList fishOptions = captures(fish, u"\\$in_%1 -l ([a-z-]+)"_s.arg(command));
    fishOptions.replaceInStrings(QRegularExpression(u"^"_s), u"--"_s);
    QCOMPARE(fishOptions, help);
    const QString manual =
        section(fileText(u"linux/quillory-cli.1.in"_s), u".SH OPTIONS OF "_s + command.toUpper(), u"\n.SH"_s);
    QString dashes = manual;
    dashes.replace(u"\\-"_s, u"-"_s);
    QCOMPARE(captures(dashes, u"^\\.BI? \"?(--[a-z-]+)"_s) + QStringList{},
        QStringList(help).filter(QRegularExpression(u"^(?!--help$)"_s)));

    if (hasProgram(u"bash"_s))
        QCOMPARE(offeredByBash({command, u"--"_s}), help);
    if (hasProgram(u"fish"_s))
        QCOMPARE(offeredByFish({command, u"--"_s}), help);
}

void tst_cliCompletions::haveTheWordsOfEachOption_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QStringList>("words");
    for (const CommandDescription &command : {findCommand(), removeCommand()}) {
        for (const OptionDescription &option : command.options) {
            if (!option.words.isEmpty())
                QTest::addRow("%s", qPrintable(option.name))
                    << command.name << u"--"_s + option.name << option.words;
        }
    }
}

void tst_cliCompletions::haveTheWordsOfEachOption()
{
    QFETCH(const QString, command);
    QFETCH(const QString, option);
    QFETCH(const QStringList, words);
    QStringList sorted = words;
    sorted.sort();

    const QString inOrder = words.join(u' ');
    const QString zshLine =
        section(fileText(u"completions/_quillory-cli"_s), u"'"_s + option + u'=', u"\n"_s);
    QVERIFY(zshLine.contains(inOrder + u')') || zshLine.contains(inOrder + u'\''));
    if (hasProgram(u"bash"_s)) {
        QCOMPARE(offeredByBash({command, option, {}}), sorted);
        QCOMPARE(offeredByBash({command, option, u"="_s, {}}), sorted);
        QCOMPARE(offeredByBash({command, option, u"="_s}), sorted);
        QVERIFY(offeredByBash({command, option, words.constFirst().first(2)}).contains(words.constFirst()));
    }
    const QString fishLine = section(fileText(u"completions/quillory-cli.fish"_s),
        u"in_%1 -l %2 "_s.arg(command, option.sliced(2)), u"\n"_s);
    QVERIFY(fishLine.contains(inOrder + u'\'') || fishLine.contains(inOrder + u')'));
}

void tst_cliCompletions::offerCommands()
{
    const QStringList commands{u"--help"_s, u"--version"_s, u"find"_s, u"remove"_s};
    if (hasProgram(u"bash"_s))
        QCOMPARE(offeredByBash({QString()}), commands);
    if (hasProgram(u"fish"_s)) {
        QVERIFY(offeredByFish({QString()}).contains(u"find"_s));
        QVERIFY(offeredByFish({QString()}).contains(u"remove"_s));
        QCOMPARE(offeredByFish({u"--"_s}), commands.first(2));
    }
}

void tst_cliCompletions::offerTheNextWordOfAList()
{
    if (!hasProgram(u"bash"_s))
        QSKIP("there is no bash");
    QCOMPARE(offeredByBash({u"find"_s, u"--types"_s, u"picture,v"_s}), QStringList{u"picture,video"_s});
}

void tst_cliCompletions::areValidScripts()
{
    if (!hasProgram(u"zsh"_s))
        QSKIP("there is no zsh");
    const CommandRun run = runCommand(
        u"zsh"_s, {u"-n"_s, QStringLiteral(PROJECT_FOLDER "/packaging/completions/_quillory-cli")});
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 0);
}

QTEST_GUILESS_MAIN(tst_cliCompletions)
#include "tst_cliCompletions.moc"
