#include "cli/CommandLine.h"
#include "cli/ExitCode.h"
#include "cli/Find.h"
#include "cli/FindOptions.h"
#include "cli/Hints.h"
#include "cli/Remove.h"

#include <QTest>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// The error in these arguments of find; empty if they are valid.
QString usageError(const QStringList &arguments)
{
    const auto parsed = parseCommandLine(findCommand(), arguments);
    if (const auto *const error = std::get_if<UsageError>(&parsed))
        return error->message;
    const auto options = findOptions(std::get<CommandArguments>(parsed));
    const auto *const error = std::get_if<UsageError>(&options);
    return error ? error->message : QString();
}

/// A row of refusesWrongUsage().
void addRow(const QStringList &arguments, const QString &message)
{
    QTest::addRow("%s", qPrintable(arguments.join(u' '))) << arguments << message;
}

} // namespace

/// Messages about wrong command lines, hints, the order of exit codes, and the help.
class tst_cliUsage : public QObject
{
    Q_OBJECT

private slots:
    void refusesWrongUsage_data();
    void refusesWrongUsage();
    void prefersHelpToErrors();
    void findsTheNearestWord_data();
    void findsTheNearestWord();
    void ranksExitCodes_data();
    void ranksExitCodes();
    void fitsHelpInto80Columns_data();
    void fitsHelpInto80Columns();

private:
    static void addWrongValues();
};

void tst_cliUsage::refusesWrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    addRow({}, u"no FOLDER given"_s);
    addRow({u"--hidden"_s}, u"no FOLDER given"_s);
    addRow({u"--reference"_s, u"r"_s}, u"no FOLDER given"_s);
    addRow({u"a"_s, {}}, u"a FOLDER is empty"_s);
    addRow({u"--fromat"_s, u"json"_s, u"a"_s}, u"unknown option --fromat (did you mean --format?)"_s);
    addRow({u"--fromat=json"_s, u"a"_s}, u"unknown option --fromat (did you mean --format?)"_s);
    addRow({u"--out"_s, u"a"_s}, u"unknown option --out (did you mean --output?)"_s);
    addRow({u"-format"_s, u"a"_s}, u"unknown option -format (did you mean --format?)"_s);
    addRow({u"-r"_s, u"a"_s}, u"unknown option -r"_s);
    addRow({u"--delete"_s, u"a"_s}, u"unknown option --delete"_s);
    addWrongValues();
}

void tst_cliUsage::addWrongValues()
{
    addRow({u"--format"_s, u"jsn"_s, u"a"_s},
        u"--format takes text, json, csv or paths, not \"jsn\" (did you mean json?)"_s);
    addRow({u"--format"_s, u"JSON"_s, u"a"_s},
        u"--format takes text, json, csv or paths, not \"JSON\" (did you mean json?)"_s);
    addRow({u"--format"_s, u"xml"_s, u"a"_s}, u"--format takes text, json, csv or paths, not \"xml\""_s);
    addRow({u"--keep"_s, u"old"_s, u"a"_s},
        u"--keep takes oldest, newest, first or shortest, not \"old\" (did you mean oldest?)"_s);
    addRow({u"--compare"_s, u"byte"_s, u"a"_s},
        u"--compare takes bytes or sample, not \"byte\" (did you mean bytes?)"_s);
    addRow({u"--progress"_s, u"on"_s, u"a"_s}, u"--progress takes auto, always or never, not \"on\""_s);
    addRow({u"--types"_s, u"picture,vidoe"_s, u"a"_s},
        u"--types takes picture, video, audio, document, archive or other, not \"vidoe\" (did you mean video?)"_s);
    addRow({u"--types"_s, u"picture,"_s, u"a"_s},
        u"--types takes picture, video, audio, document, archive or other, not \"\""_s);
    addRow({u"--skip"_s, u"hidden"_s, u"a"_s},
        u"--skip takes system, applications or desktop, not \"hidden\""_s);
    addRow({u"--format=xml"_s, u"--format=json"_s, u"a"_s},
        u"--format takes text, json, csv or paths, not \"xml\""_s);
    addRow({u"--keep"_s}, u"missing value after '--keep'"_s);
    addRow({u"--hidden=yes"_s, u"a"_s}, u"unexpected value after '--hidden'"_s);
    for (const QString &option : {u"types"_s, u"skip"_s, u"min-size"_s, u"exclude"_s, u"reference"_s,
             u"keep"_s, u"format"_s, u"output"_s, u"threads"_s})
        addRow({u"--"_s + option + u'=', u"a"_s}, u"--%1 needs a value"_s.arg(option));
    addRow({u"--null"_s, u"a"_s}, u"--null goes with --format paths only"_s);
    addRow({u"--null"_s, u"--format=json"_s, u"a"_s}, u"--null goes with --format paths only"_s);
    addRow({u"--min-size=3"_s, u"--max-size=2"_s, u"a"_s}, u"--min-size 3 is more than --max-size 2"_s);
    addRow({u"--max-size=0"_s, u"a"_s}, u"--min-size 1 is more than --max-size 0"_s);
    for (const QString &number : {u"0"_s, u"-1"_s, u"x"_s, u"1.5"_s, u"99999999999999999999"_s})
        addRow(
            {u"--threads"_s, number, u"a"_s}, u"--threads takes a number from 1, not \"%1\""_s.arg(number));
}

void tst_cliUsage::refusesWrongUsage()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, message);
    QCOMPARE(usageError(arguments), message);
}

void tst_cliUsage::prefersHelpToErrors()
{
    const auto parsed = parseCommandLine(findCommand(), {u"--format=xml"_s, u"--help"_s});
    QVERIFY(std::get<CommandArguments>(parsed).wantsHelp);
    QVERIFY(std::get<CommandArguments>(parseCommandLine(findCommand(), {u"-h"_s})).wantsHelp);
    const auto unknown = parseCommandLine(findCommand(), {u"--help"_s, u"--nonsense"_s});
    QVERIFY(std::holds_alternative<UsageError>(unknown));
}

void tst_cliUsage::findsTheNearestWord_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("nearest");
    const auto add = [](const char *typed, const QString &nearest) {
        QTest::addRow("%s", typed) << QString::fromLatin1(typed) << nearest;
    };
    add("fnd", u"find"_s);
    add("fidn", u"find"_s);
    add("finds", u"find"_s);
    add("FIND", u"find"_s);
    add("fi", u"find"_s);
    add("delete", {});
    add("rm", {});
    add("remov", u"remove"_s);
    add("removed", u"remove"_s);
    add("rmeoev", u"remove"_s);
    add("rename", {});
    add("x", {});
    add("", {});
    add("remote-something", {});
}

void tst_cliUsage::findsTheNearestWord()
{
    QFETCH(const QString, typed);
    QFETCH(const QString, nearest);
    QCOMPARE(nearestWord(typed, {u"find"_s, u"remove"_s}).value_or(QString()), nearest);
}

void tst_cliUsage::ranksExitCodes_data()
{
    QTest::addColumn<int>("lighter");
    QTest::addColumn<int>("heavier");
    const QList<int> byWeight{0, 3, 4, 1, 130, 2};
    for (qsizetype i = 0; i < byWeight.size(); ++i) {
        for (qsizetype j = i; j < byWeight.size(); ++j)
            QTest::addRow("%d and %d", byWeight[i], byWeight[j]) << byWeight[i] << byWeight[j];
    }
}

void tst_cliUsage::ranksExitCodes()
{
    QFETCH(const int, lighter);
    QFETCH(const int, heavier);
    const auto a = static_cast<ExitCode>(lighter);
    const auto b = static_cast<ExitCode>(heavier);
    QCOMPARE(int(moreSerious(a, b)), heavier);
    QCOMPARE(int(moreSerious(b, a)), heavier);
}

void tst_cliUsage::fitsHelpInto80Columns_data()
{
    QTest::addColumn<QString>("help");
    QTest::addRow("find") << helpText(findCommand());
    QTest::addRow("remove") << helpText(removeCommand());
}

void tst_cliUsage::fitsHelpInto80Columns()
{
    QFETCH(const QString, help);
    QVERIFY(help.startsWith(u"Usage: quillory-cli "));
    for (const QString &line : help.split(u'\n')) {
        QVERIFY2(line.size() < 80, qPrintable(line));
        QVERIFY2(!line.endsWith(u' '), qPrintable(line));
    }
}

QTEST_GUILESS_MAIN(tst_cliUsage)
#include "tst_cliUsage.moc"
