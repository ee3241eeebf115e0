#include "cli/JsonReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <functional>
#include <limits>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr qint64 noon = 1'795'262'400'123; // 2026-11-21T12:00:00.123Z

Report sampleReport()
{
    Report report;
    report.compared = u"bytes"_s;
    report.created = QDateTime::fromMSecsSinceEpoch(noon, Qt::UTC);
    report.folders = QStringList{u"/a"_s, u"/b \"c\"\n"_s};
    report.groups = {{{{FileAction::Keep, 1, 2, 3, noon, u"/a/x"_s},
                          {FileAction::Remove, 1, 4, 1, -1, u"/a/ä\u0001\U0001F600"_s},
                          {FileAction::Link, 1, 2, 3, noon, u"/a/%1"_s},
                          {FileAction::Reference, 5, 6, 1, 0, u"/b \"c\"\n/z"_s}},
                         0, 123},
        {{{FileAction::Remove, 1, 7, 1, 0, u"/1"_s}, {FileAction::Keep, 1, 8, 1, 0, u"/2"_s}}, 1, 0}};
    report.summary = {10, 2, 123, 2, 4, 5};
    report.version = u"1.2.3"_s;
    return report;
}

QJsonObject parsed(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object();
}

/// The bytes of a report after \a edit.
using Edit = std::function<QByteArray(const QByteArray &)>;

Edit replacing(const QByteArray &before, const QByteArray &after)
{
    return [before, after](QByteArray json) { return json.replace(before, after); };
}

} // namespace

Q_DECLARE_METATYPE(Edit)

/// Writing and reading of JSON reports.
class tst_jsonReport : public QObject
{
    Q_OBJECT

private slots:
    void writesTheKeysInAlphabeticalOrder();
    void writesEveryFieldOfTheReport();
    void writesAnEmptyReport();
    void readsItsOwnOutput();
    void writesLargeIdentifiersExactly();
    void writesTimesBeyondTheFormat();
    void readsAnotherLayout();
    void readsTheGroupWithoutAKeptFile_data();
    void readsTheGroupWithoutAKeptFile();
    void refuses_data();
    void refuses();
    void refusesEveryTruncation();

private:
    /// Rows of refuses().
    static void addEditedKeys();
};

void tst_jsonReport::writesTheKeysInAlphabeticalOrder()
{
    Report report = sampleReport();
    report.folders = QStringList{u"/a"_s};
    report.groups = {{{{FileAction::Keep, 1, 2, 3, noon, u"/a/x"_s}}, 0, 123}};
    const QByteArray expected =
        R"({"compared": "bytes", "created": "2026-11-21T12:00:00Z", "folders": ["/a"], )"
        R"("groups": [ {"files": [ {"action": "keep", "device": 1, "inode": 2, "links": 3, )"
        R"("modified": "2026-11-21T12:00:00.123Z", "path": "/a/x"}], "kept": 0, "size": 123}], )"
        R"("quillory_report": 1, )"
        R"("summary": {"files": 10, "groups": 2, "removable_bytes": 123, "removable_files": 2, )"
        R"("undecodable_names": 4, "unreadable": 5}, "version": "1.2.3"})";
    QCOMPARE(toJson(report).simplified(), expected);
}

void tst_jsonReport::writesEveryFieldOfTheReport()
{
    const QJsonObject root = parsed(toJson(sampleReport()));
    QCOMPARE(root.value(u"folders"_s), (QJsonArray{u"/a"_s, u"/b \"c\"\n"_s}));
    const QJsonArray groups = root.value(u"groups"_s).toArray();
    QCOMPARE(groups.size(), 2);
    const QJsonArray files = groups.at(0).toObject().value(u"files"_s).toArray();
    QStringList actions;
    for (const QJsonValue file : files)
        actions.append(file[u"action"_s].toString());
    QCOMPARE(actions, (QStringList{u"keep"_s, u"remove"_s, u"link"_s, u"reference"_s}));
    QCOMPARE(files.at(1).toObject().value(u"path"_s).toString(), u"/a/ä\u0001\U0001F600"_s);
    QCOMPARE(files.at(1).toObject().value(u"modified"_s).toString(), u"1969-12-31T23:59:59.999Z"_s);
    QCOMPARE(groups.at(1).toObject().value(u"kept"_s).toInteger(), 1);
}

void tst_jsonReport::writesAnEmptyReport()
{
    Report report;
    report.compared = u"sample"_s;
    report.created = QDateTime::fromMSecsSinceEpoch(0, Qt::UTC);
    const ParsedReport read = parseReport(toJson(report));
    QVERIFY2(read.report, qPrintable(read.reason));
    QCOMPARE(read.report->compared, u"sample"_s);
    QVERIFY(read.report->groups.isEmpty());
}

void tst_jsonReport::readsItsOwnOutput()
{
    const Report report = sampleReport();
    const ParsedReport read = parseReport(toJson(report));
    QVERIFY2(read.report, qPrintable(read.reason));
    QCOMPARE(toJson(*read.report), toJson(report));
}

/// Inodes use all 64 bits on some file systems.
void tst_jsonReport::writesLargeIdentifiersExactly()
{
    Report report = sampleReport();
    report.groups[0].files[0].inode = std::numeric_limits<quint64>::max();
    report.groups[0].files[1].inode = (1ULL << 53) + 1;
    const QByteArray json = toJson(report);
    QVERIFY(json.contains(R"("inode": 18446744073709551615,)"));
    QVERIFY(json.contains(R"("inode": 9007199254740993,)"));
    const ParsedReport read = parseReport(json);
    QVERIFY2(read.report, qPrintable(read.reason));
    QCOMPARE(read.report->groups[0].files[0].inode, std::numeric_limits<quint64>::max());
    QCOMPARE(read.report->groups[0].files[1].inode, (1ULL << 53) + 1);
}

void tst_jsonReport::writesTimesBeyondTheFormat()
{
    Report report = sampleReport();
    report.groups[0].files[0].modified = std::numeric_limits<qint64>::max();
    report.groups[0].files[1].modified = std::numeric_limits<qint64>::min();
    const QByteArray json = toJson(report);
    QVERIFY(json.contains("\"9999-12-31T23:59:59.999Z\""));
    const ParsedReport read = parseReport(json);
    QVERIFY2(read.report, qPrintable(read.reason));
}

void tst_jsonReport::readsAnotherLayout()
{
    const QByteArray json =
        R"({"version":"1","unknown":[{}],"quillory_report":1.0,"compared":"bytes",)"
        "\r\n\t"
        R"("groups":[{"size":1e2,"kept":0,"files":[{"path":"/\u00e4","action":"keep"}]}]})";
    const ParsedReport read = parseReport(json);
    QVERIFY2(read.report, qPrintable(read.reason));
    QCOMPARE(read.report->groups.at(0).size, 100);
    QCOMPARE(read.report->groups.at(0).files.at(0).path, u"/ä"_s);
}

void tst_jsonReport::readsTheGroupWithoutAKeptFile_data()
{
    QTest::addColumn<QByteArray>("kept");
    for (const char *const kept : {"-1", "4", "9223372036854775807", "-9223372036854775808", "1e300", "0.5",
             "\"0\"", "null", "true", "[0]"})
        QTest::newRow(kept) << QByteArray(kept);
}

void tst_jsonReport::readsTheGroupWithoutAKeptFile()
{
    QFETCH(const QByteArray, kept);
    const QByteArray json = toJson(sampleReport()).replace("\"kept\": 0", "\"kept\": " + kept);
    const ParsedReport read = parseReport(json);
    QVERIFY2(read.report, qPrintable(read.reason));
    QCOMPARE(read.report->groups.at(0).kept, -1);
    QCOMPARE(read.report->groups.at(1).kept, 1);
}

void tst_jsonReport::refuses_data()
{
    QTest::addColumn<Edit>("edit");
    QTest::addColumn<QString>("reason");

    const auto becoming = [](const QByteArray &json) {
        return Edit([json](const QByteArray &) { return json; });
    };
    QTest::newRow("nothing") << becoming("") << u"no JSON"_s;
    QTest::newRow("text") << becoming("/a/x\n/a/y\n") << u"no JSON"_s;
    QTest::newRow("list") << becoming("[]") << u"no report"_s;
    QTest::newRow("other object") << becoming("{}") << u"no report"_s;
    QTest::newRow("zeros") << becoming(QByteArray(4096, '\0')) << u"no JSON"_s;
    QTest::newRow("nested too deeply") << becoming(QByteArray(1'000'000, '[')) << u"no JSON"_s;
    QTest::newRow("more behind it") << Edit([](const QByteArray &json) { return json + json; })
                                    << u"no JSON"_s;
    QTest::newRow("later version") << replacing("\"quillory_report\": 1", "\"quillory_report\": 2")
                                   << u"later version"_s;
    QTest::newRow("earlier version") << replacing("\"quillory_report\": 1", "\"quillory_report\": 0")
                                     << u"no report"_s;
    QTest::newRow("version as text") << replacing("\"quillory_report\": 1", R"("quillory_report": "1")")
                                     << u"no report"_s;

    addEditedKeys();
}

void tst_jsonReport::addEditedKeys()
{
    const auto row = [](const char *before, const char *after, const QString &reason) {
        QTest::addRow("%s to %s", before, after) << replacing(before, after) << reason;
    };
    row("\"groups\": [", "\"group\": [", u"groups is not a list"_s);
    row("\"folders\": [", "\"folders\": [1,", u"folders is not a list of texts"_s);
    row("[\"/a\"", R"({"/a": 1}, "other": ["/a")", u"folders is not a list"_s);
    row(R"("compared": "bytes")", R"("compared": "names")", u"compared is not bytes or sample"_s);
    row(R"("compared": "bytes")", "\"compared\": 1", u"compared is not a text"_s);
    row("2026-11-21T12:00:00Z", "yesterday", u"created is not a time"_s);
    row(R"("action": "link")", R"("action": "Remove")", u"group 1: file 3: action is not keep, remove"_s);
    row(R"("action": "link")", R"("actions": "link")", u"group 1: file 3: action is not keep, remove"_s);
    row(R"("path": "/2")", "\"path\": 2", u"group 2: file 2: path is not a text"_s);
    row(R"("path": "/2")", R"("file": "/2")", u"group 2: file 2: path is not a text"_s);
    row("\"inode\": 8", R"("inode": "8")", u"group 2: file 2: inode is not a whole number"_s);
    row("\"inode\": 8", "\"inode\": 1e20", u"group 2: file 2: inode is not a whole number"_s);
    row("\"device\": 5", "\"device\": -5", u"group 1: file 4: device is not a whole number"_s);
    row("\"links\": 3", "\"links\": 0.5", u"group 1: file 1: links is not a whole number"_s);
    row("12:00:00.123Z", "", u"group 1: file 1: modified is not a time"_s);
    row("\"size\": 123", "\"size\": -1", u"group 1: size is not a whole number"_s);
    row("\"size\": 123", "\"sizes\": 123", u"group 1: size is not a whole number"_s);
    row("\"size\": 123", "\"size\": 9223372036854775808", u"group 1: size is not a whole number"_s);
    row("{\"files\": [\n", "{\"files\": {}, \"other\": [\n", u"group 1: files is not a list"_s);
    row("{\"files\": [\n", "7, {\"files\": [\n", u"group 1: it is not an object"_s);
    row("\"files\": [\n", "\"files\": [null,\n", u"group 1: file 1: it is not an object"_s);
    row("\"summary\": {", R"("summary": 1, "other": {)", u"summary is not an object"_s);
    row("\"removable_bytes\": 123", R"("removable_bytes": "123")",
        u"removable_bytes is not a whole number"_s);
    row(R"("version": "1.2.3")", "\"version\": 4", u"version is not a text"_s);
}

void tst_jsonReport::refuses()
{
    QFETCH(const Edit, edit);
    QFETCH(const QString, reason);
    const QByteArray json = toJson(sampleReport());
    QVERIFY(parseReport(json).report);
    const ParsedReport read = parseReport(edit(json));
    QVERIFY(!read.report);
    QVERIFY2(read.reason.contains(reason), qPrintable(read.reason));
    QVERIFY2(!read.reason.contains(u'\n'), qPrintable(read.reason));
}

void tst_jsonReport::refusesEveryTruncation()
{
    const QByteArray json = toJson(sampleReport()).trimmed();
    for (qsizetype length = 0; length < json.size(); ++length) {
        const ParsedReport read = parseReport(json.first(length));
        QVERIFY2(!read.report && !read.reason.isEmpty(), json.first(length).constData());
    }
}

QTEST_GUILESS_MAIN(tst_jsonReport)
#include "tst_jsonReport.moc"
