#include "cli/Messages.h"
#include "cli/ReportFormats.h"

#include <QTest>

#include <array>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

constexpr qint64 noon = 1'795'262'400'123; // 2026-11-21T12:00:00.123Z

Report twoGroups()
{
    Report report;
    report.compared = u"bytes"_s;
    report.groups = {
        {{{FileAction::Keep, 1, 2, 1, noon, u"a/x"_s}, {FileAction::Link, 1, 3, 2, noon, u"b/l"_s},
             {FileAction::Remove, 1, 3, 2, noon, u"b/x"_s}},
            0, 4404019},
        {{{FileAction::Keep, 1, 4, 1, noon, u"a/\"y\", z"_s},
             {FileAction::Reference, 1, 5, 1, noon, u"r/\n"_s}},
            0, 123}};
    report.summary = {.files = 10, .groups = 2, .removableBytes = 4404019, .removableFiles = 1};
    return report;
}

Report sampled(Report report)
{
    report.compared = u"sample"_s;
    return report;
}

template <typename Write>
QByteArray written(const Write &write)
{
    QByteArray bytes;
    write([&bytes](const QByteArray &more) {
        bytes += more;
        return true;
    });
    return bytes;
}

QByteArray text(const Report &report, bool withColours = false)
{
    return written([&](const ReportSink &sink) { writeText(report, withColours, sink); });
}

QByteArray paths(const Report &report, bool nullSeparated)
{
    return written([&](const ReportSink &sink) { writePaths(report, nullSeparated, sink); });
}

QByteArray csv(const Report &report)
{
    return written([&](const ReportSink &sink) { writeCsv(report, sink); });
}

} // namespace

/// The exact bytes of the report formats.
class tst_cliFormats : public QObject
{
    Q_OBJECT

private slots:
    void writesText();
    void marksSamplesInText();
    void coloursActions();
    void closesWithUnreadablePathsAndNames();
    void endsAnEmptyReport();
    void writesCsv();
    void marksSamplesInCsv();
    void quotesCsvFields_data();
    void quotesCsvFields();
    void writesPaths();
    void separatesPathsByNull();
    void writesNoPathsWithoutGroups();
    void stopsWhenTheSinkReturnsFalse();
    void showsControlCharacters_data();
    void showsControlCharacters();
};

void tst_cliFormats::writesText()
{
    QCOMPARE(text(twoGroups()),
        "4.20 MB each, 2 files\n"
        "  keep   a/x\n"
        "  link   b/l\n"
        "  remove b/x\n"
        "\n"
        "123 B each, 2 files\n"
        "  keep      a/\"y\", z\n"
        "  reference r/\\n\n"
        "\n"
        "2 groups, 1 file to remove, 4.20 MB to win (for 1 file only when its last name goes)\n");
}

void tst_cliFormats::marksSamplesInText()
{
    const QList<QByteArray> lines = text(sampled(twoGroups())).split('\n');
    QCOMPARE(lines.constFirst(), "4.20 MB each, 2 files, compared by sample");
    QVERIFY(lines[lines.size() - 2].endsWith(", compared by sample"));
}

void tst_cliFormats::coloursActions()
{
    const QByteArray coloured = text(twoGroups(), true);
    QVERIFY(coloured.startsWith("\x1b[1m4.20 MB each, 2 files\x1b[0m\n  \x1b[32mkeep   \x1b[0ma/x\n"));
    QVERIFY(coloured.contains("\x1b[36mlink   \x1b[0mb/l\n"));
    QVERIFY(coloured.contains("\x1b[31mremove \x1b[0mb/x\n"));
    QVERIFY(coloured.contains("\x1b[33mreference \x1b[0mr/\\n\n"));
}

void tst_cliFormats::closesWithUnreadablePathsAndNames()
{
    Report report;
    report.compared = u"bytes"_s;
    report.summary.unreadable = 3;
    report.summary.undecodableNames = 1;
    QCOMPARE(text(report), "3 paths could not be read\n"
                           "1 name left out: not valid text\n"
                           "0 groups, 0 files to remove, 0 B to win\n");
}

void tst_cliFormats::endsAnEmptyReport()
{
    QCOMPARE(text({}), "0 groups, 0 files to remove, 0 B to win\n");
}

void tst_cliFormats::writesCsv()
{
    QCOMPARE(csv(twoGroups()), "group,size,action,path,modified,compared\r\n"
                               "1,4404019,keep,a/x,2026-11-21T12:00:00.123Z,bytes\r\n"
                               "1,4404019,link,b/l,2026-11-21T12:00:00.123Z,bytes\r\n"
                               "1,4404019,remove,b/x,2026-11-21T12:00:00.123Z,bytes\r\n"
                               "2,123,keep,\"a/\"\"y\"\", z\",2026-11-21T12:00:00.123Z,bytes\r\n"
                               "2,123,reference,\"r/\n\",2026-11-21T12:00:00.123Z,bytes\r\n");
    QCOMPARE(csv({}), "group,size,action,path,modified,compared\r\n");
}

void tst_cliFormats::marksSamplesInCsv()
{
    QCOMPARE(csv(sampled(twoGroups())).count(",sample\r\n"), 5);
}

void tst_cliFormats::quotesCsvFields_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("field");
    QTest::addRow("plain") << u"/a b;c'd"_s << QByteArray("/a b;c'd");
    QTest::addRow("comma") << u"/a,b"_s << QByteArray("\"/a,b\"");
    QTest::addRow("quote") << u"/a\"b"_s << QByteArray(R"("/a""b")");
    QTest::addRow("line feed") << u"/a\nb"_s << QByteArray("\"/a\nb\"");
    QTest::addRow("carriage return") << u"/a\rb"_s << QByteArray("\"/a\rb\"");
    QTest::addRow("not ASCII") << u"/\u00e4\U0001F600"_s << QByteArray("/\xc3\xa4\xf0\x9f\x98\x80");
}

void tst_cliFormats::quotesCsvFields()
{
    QFETCH(const QString, path);
    QFETCH(const QByteArray, field);
    Report report;
    report.groups = {{{{.action = FileAction::Keep, .path = path}}, 0, 1}};
    QVERIFY(csv(report).contains(",keep," + field + ",1970-01-01T00:00:00.000Z,"));
}

void tst_cliFormats::writesPaths()
{
    QCOMPARE(paths(twoGroups(), false), "a/x\nb/x\n\na/\"y\", z\nr/\n\n");
}

void tst_cliFormats::separatesPathsByNull()
{
    constexpr std::array expected{"a/x", "b/x", "", "a/\"y\", z", "r/\n", ""};
    const QList<QByteArray> found = paths(twoGroups(), true).split('\0');
    QCOMPARE(found, QList<QByteArray>(expected.begin(), expected.end()));
}

void tst_cliFormats::writesNoPathsWithoutGroups()
{
    QCOMPARE(paths({}, false), QByteArray());
    QCOMPARE(paths({}, true), QByteArray());
}

void tst_cliFormats::stopsWhenTheSinkReturnsFalse()
{
    int calls = 0;
    const ReportSink sink = [&calls](const QByteArray &) {
        ++calls;
        return false;
    };
    writeText(twoGroups(), false, sink);
    writeCsv(twoGroups(), sink);
    writePaths(twoGroups(), false, sink);
    QCOMPARE(calls, 3);
}

void tst_cliFormats::showsControlCharacters_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("visible");
    QTest::addRow("named") << u"\n\r\t"_s << u"\\n\\r\\t"_s;
    QTest::addRow("C0") << u"\u0001\u001b[31m\u001f "_s << u"\\x01\\x1b[31m\\x1f "_s;
    QTest::addRow("NUL") << QString(QChar(0)) << u"\\x00"_s;
    QTest::addRow("DEL") << u"~\u007f"_s << u"~\\x7f"_s;
    QTest::addRow("C1") << u"\u0080\u009b\u009f\u00a0"_s << u"\\x80\\x9b\\x9f\u00a0"_s;
    QTest::addRow("others") << u"\\n %1 \u00e4\U0001F600"_s << u"\\n %1 \u00e4\U0001F600"_s;
}

void tst_cliFormats::showsControlCharacters()
{
    QFETCH(const QString, text);
    QFETCH(const QString, visible);
    QCOMPARE(withVisibleControls(text), visible);
}

QTEST_GUILESS_MAIN(tst_cliFormats)
#include "tst_cliFormats.moc"
