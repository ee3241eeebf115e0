#include "cli/CommandLine.h"
#include "cli/Find.h"
#include "cli/FindOptions.h"

#include <QTest>
#include <QThread>

#include <limits>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

FindOptions options(const QStringList &arguments)
{
    return std::get<FindOptions>(
        findOptions(std::get<CommandArguments>(parseCommandLine(findCommand(), arguments))));
}

} // namespace

/// Options of find from the command line.
class tst_cliOptions : public QObject
{
    Q_OBJECT

private slots:
    void hasTheDocumentedDefaults();
    void readsEveryOption();
    void acceptsValuesAfterAnEqualsSign();
    void usesTheLastOfTwoValues();
    void collectsRepeatableOptions();
    void endsOptionsAtTwoDashes();
    void acceptsOptionsAfterOperands();

    void readsSizes_data();
    void readsSizes();
};

void tst_cliOptions::hasTheDocumentedDefaults()
{
    const FindOptions found = options({u"a"_s});
    QCOMPARE(found.folders, QStringList{u"a"_s});
    QCOMPARE(found.references, QStringList());
    QCOMPARE(found.filters.options.fileTypes, QStringList{u"other"_s});
    QVERIFY(!found.filters.options.skipSystem);
    QVERIFY(!found.filters.options.skipApps);
    QVERIFY(!found.filters.options.skipDesktop);
    QVERIFY(!found.filters.includeHidden);
    QCOMPARE(found.filters.minSize, qint64(1));
    QCOMPARE(found.filters.maxSize, std::numeric_limits<qint64>::max());
    QVERIFY(!found.filters.excluded);
    QCOMPARE(found.filters.threads, QThread::idealThreadCount());
    QVERIFY(found.keep == KeepRule::Oldest);
    QVERIFY(found.comparison == ContentComparison::Bytes);
    QVERIFY(found.format == ReportFormat::Text);
    QVERIFY(!found.nullSeparated);
    QCOMPARE(found.outputFile, QString());
    QVERIFY(found.progress == ProgressWish::Auto);
    QVERIFY(!found.failOnDuplicates);
}

void tst_cliOptions::readsEveryOption()
{
    const FindOptions found = options({u"--types"_s, u"picture,audio"_s, u"--skip"_s,
        u"system,applications,desktop"_s, u"--hidden"_s, u"--min-size"_s, u"2K"_s, u"--max-size"_s, u"3M"_s,
        u"--exclude"_s, u"x"_s, u"--reference"_s, u"r"_s, u"--keep"_s, u"shortest"_s, u"--compare"_s,
        u"sample"_s, u"--format"_s, u"paths"_s, u"--null"_s, u"--output"_s, u"o"_s, u"--progress"_s,
        u"never"_s, u"--threads"_s, u"3"_s, u"--fail-on-duplicates"_s, u"a"_s, u"b"_s});
    QCOMPARE(found.folders, QStringList({u"a"_s, u"b"_s}));
    QCOMPARE(found.references, QStringList{u"r"_s});
    QCOMPARE(found.filters.options.fileTypes, QStringList({u"picture"_s, u"audio"_s}));
    QVERIFY(found.filters.options.skipSystem);
    QVERIFY(found.filters.options.skipApps);
    QVERIFY(found.filters.options.skipDesktop);
    QVERIFY(found.filters.includeHidden);
    QCOMPARE(found.filters.minSize, qint64(2048));
    QCOMPARE(found.filters.maxSize, qint64(3) << 20);
    QVERIFY(found.filters.excluded(u"x", u"y/x"));
    QCOMPARE(found.filters.threads, 3);
    QVERIFY(found.keep == KeepRule::Shortest);
    QVERIFY(found.comparison == ContentComparison::Sample);
    QVERIFY(found.format == ReportFormat::Paths);
    QVERIFY(found.nullSeparated);
    QCOMPARE(found.outputFile, u"o"_s);
    QVERIFY(found.progress == ProgressWish::Never);
    QVERIFY(found.failOnDuplicates);
}

void tst_cliOptions::acceptsValuesAfterAnEqualsSign()
{
    const FindOptions found = options({u"--exclude=a=b"_s, u"--keep=newest"_s, u"--format=csv"_s, u"x"_s});
    QVERIFY(found.filters.excluded(u"a=b", u"a=b"));
    QVERIFY(found.keep == KeepRule::Newest);
    QVERIFY(found.format == ReportFormat::Csv);
}

void tst_cliOptions::usesTheLastOfTwoValues()
{
    const FindOptions found =
        options({u"--format=csv"_s, u"--min-size=5"_s, u"--format=json"_s, u"--min-size=7"_s, u"x"_s});
    QVERIFY(found.format == ReportFormat::Json);
    QCOMPARE(found.filters.minSize, qint64(7));
}

void tst_cliOptions::collectsRepeatableOptions()
{
    const FindOptions found =
        options({u"--exclude=a"_s, u"--reference=r"_s, u"--exclude=b"_s, u"--reference=s"_s, u"x"_s});
    QVERIFY(found.filters.excluded(u"a", u"a"));
    QVERIFY(found.filters.excluded(u"b", u"b"));
    QCOMPARE(found.references, QStringList({u"r"_s, u"s"_s}));
}

void tst_cliOptions::endsOptionsAtTwoDashes()
{
    const FindOptions found = options({u"--hidden"_s, u"--"_s, u"--null"_s, u"--"_s});
    QVERIFY(!found.nullSeparated);
    QCOMPARE(found.folders, QStringList({u"--null"_s, u"--"_s}));
}

void tst_cliOptions::acceptsOptionsAfterOperands()
{
    const FindOptions found = options({u"a"_s, u"--hidden"_s, u"b"_s});
    QVERIFY(found.filters.includeHidden);
    QCOMPARE(found.folders, QStringList({u"a"_s, u"b"_s}));
}

void tst_cliOptions::readsSizes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("size");
    constexpr qint64 wrong = -1;
    const auto add = [](const QString &text, qint64 size) {
        QTest::addRow("%s", qPrintable(text)) << text << size;
    };
    add(u"0"_s, 0);
    add(u"007"_s, 7);
    add(u"1K"_s, 1024);
    add(u"1k"_s, 1024);
    add(u"3M"_s, qint64(3) << 20);
    add(u"2G"_s, qint64(2) << 30);
    add(u"5T"_s, qint64(5) << 40);
    add(u"9223372036854775807"_s, std::numeric_limits<qint64>::max());
    add(u"8388607T"_s, qint64(8388607) << 40);
    add(u"8388608T"_s, wrong);
    add(u"9223372036854775808"_s, wrong);
    add(u"18446744073709551617"_s, wrong);
    for (const char *const text : {"-1", "+1", " 1", "1 ", "", "K", "1KB", "1KiB", "1.5M", "0x10", "1e3",
             "1P", "1,000", "\u0661", "--hidden"})
        add(QString::fromUtf8(text), wrong);
}

void tst_cliOptions::readsSizes()
{
    QFETCH(const QString, text);
    QFETCH(const qint64, size);
    const auto parsed = parseSize(text, u"min-size"_s);
    QCOMPARE(std::holds_alternative<qint64>(parsed), size >= 0);
    if (size >= 0)
        QCOMPARE(std::get<qint64>(parsed), size);
    else
        QVERIFY(std::get<UsageError>(parsed).message.startsWith(u"--min-size"));
}

QTEST_GUILESS_MAIN(tst_cliOptions)
#include "tst_cliOptions.moc"
