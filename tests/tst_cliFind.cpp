#include "tests/support/CliFolder.h"
#include "tests/support/RandomBytes.h"
#include "tests/support/TestFiles.h"

#include <QDateTime>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

#include <algorithm>
#include <memory>

using Qt::Literals::StringLiterals::operator""_s;

/// The files that `quillory-cli find` reports.
class tst_cliFind : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void listsIdenticalFiles();
    void reportsEverythingInJson();
    void comparesEveryByte();
    void comparesSamplesOnRequest();
    void leavesOutFilteredFiles_data();
    void leavesOutFilteredFiles();
    void keepsOldestOrNewest();
    void givesTheSameOutputWithAnyNumberOfThreads();

private:
    std::unique_ptr<CliFolder> m_place;
};

void tst_cliFind::init()
{
    m_place = std::make_unique<CliFolder>(QStringLiteral(QUILLORY_CLI));
}

void tst_cliFind::listsIdenticalFiles()
{
    m_place->write(u"a/small"_s, "12345");
    m_place->write(u"b/small"_s, "12345");
    m_place->write(u"b/other"_s, "12346");
    m_place->write(u"b/large"_s, QByteArray(2048, 'x'));
    m_place->write(u"a/sub/large"_s, QByteArray(2048, 'x'));
    m_place->write(u"b/larger"_s, QByteArray(2049, 'x'));
    const CommandRun run = m_place->find({u"--keep"_s, u"first"_s, u"b"_s, u"./a/"_s});
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.output, "2.00 KB each, 2 files\n"
                         "  keep   b/large\n"
                         "  remove ./a/sub/large\n"
                         "\n"
                         "5 B each, 2 files\n"
                         "  keep   b/small\n"
                         "  remove ./a/small\n"
                         "\n"
                         "2 groups, 2 files to remove, 2.00 KB to win\n");
    QCOMPARE(run.exitCode, 0);
}

void tst_cliFind::reportsEverythingInJson()
{
    m_place->write(u"a/1"_s);
    m_place->write(u"a/2"_s);
    m_place->write(u"a/3"_s, "alone");
    setModificationTime(m_place->path(u"a/1"_s), 86'400);
    const QDateTime before = QDateTime::currentDateTimeUtc();
    const QJsonObject found = m_place->report({u"--keep=first"_s, u"a"_s, u"."_s});
    QCOMPARE(found.keys(), QStringList({u"compared"_s, u"created"_s, u"folders"_s, u"groups"_s,
                               u"quillory_report"_s, u"summary"_s, u"version"_s}));
    QCOMPARE(found[u"compared"], u"bytes"_s);
    QCOMPARE(
        found[u"folders"].toArray(), QJsonArray({m_place->path(u"a"_s), QDir::cleanPath(m_place->path())}));
    const QDateTime created = QDateTime::fromString(found[u"created"].toString(), Qt::ISODate);
    QVERIFY(created >= before.addSecs(-1) && created <= QDateTime::currentDateTimeUtc());
    QCOMPARE(found[u"groups"].toArray().size(), 1);
    const QJsonObject group = found[u"groups"].toArray()[0].toObject();
    QCOMPARE(group[u"kept"], 0);
    QCOMPARE(group[u"size"], 5);
    const QJsonObject file = group[u"files"].toArray()[0].toObject();
    QCOMPARE(file.keys(),
        QStringList({u"action"_s, u"device"_s, u"inode"_s, u"links"_s, u"modified"_s, u"path"_s}));
    QCOMPARE(file[u"action"], u"keep"_s);
    QCOMPARE(file[u"links"], 1);
    QCOMPARE(file[u"modified"], u"2020-01-02T00:00:00.000Z"_s);
    QCOMPARE(file[u"path"], m_place->path(u"a/1"_s));
    const QJsonObject summary{{u"files"_s, 3}, {u"groups"_s, 1}, {u"removable_bytes"_s, 5},
        {u"removable_files"_s, 1}, {u"undecodable_names"_s, 0}, {u"unreadable"_s, 0}};
    QCOMPARE(found[u"summary"].toObject(), summary);
}

void tst_cliFind::comparesEveryByte()
{
    QByteArray content = randomBytes(20'000, 1);
    m_place->write(u"1"_s, content);
    m_place->write(u"2"_s, content);
    content[10'000] = char(content[10'000] ^ 1);
    m_place->write(u"3"_s, content);
    QCOMPARE(m_place->foundPaths({u"."_s}), QStringList({u"./1"_s, u"./2"_s}));
}

void tst_cliFind::comparesSamplesOnRequest()
{
    QByteArray content = randomBytes(20'000, 1);
    m_place->write(u"1"_s, content);
    content[10'000] = char(content[10'000] ^ 1);
    m_place->write(u"2"_s, content);
    QCOMPARE(m_place->foundPaths({u"."_s}), QStringList());
    QCOMPARE(m_place->report({u"--compare=sample"_s, u"."_s})[u"compared"], u"sample"_s);
    const CommandRun run =
        m_place->find({u"--compare=sample"_s, u"--format=paths"_s, u"--keep=first"_s, u"."_s});
    QCOMPARE(run.output, "./1\n./2\n");
    QCOMPARE(run.errors, "quillory-cli: compared by sample: files of a group may differ\n");
    QCOMPARE(run.exitCode, 0);
}

void tst_cliFind::leavesOutFilteredFiles_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("found");
    QTest::addRow("default") << QStringList{} << u"a.jpg b.jpg sub/a.txt sub/b.txt"_s;
    QTest::addRow("hidden") << QStringList{u"--hidden"_s}
                            << u".h/x .h/y .z a.jpg b.jpg sub/a.txt sub/b.txt"_s;
    QTest::addRow("empty") << QStringList{u"--min-size=0"_s}
                           << u"a.jpg b.jpg sub/a.txt sub/b.txt empty1 empty2"_s;
    QTest::addRow("smallest") << QStringList{u"--min-size=8"_s} << u"sub/a.txt sub/b.txt"_s;
    QTest::addRow("largest") << QStringList{u"--max-size=7"_s} << u"a.jpg b.jpg"_s;
    QTest::addRow("one type") << QStringList{u"--types=picture"_s} << u"a.jpg b.jpg"_s;
    QTest::addRow("two types") << QStringList{u"--types=audio,document"_s} << u"sub/a.txt sub/b.txt"_s;
    QTest::addRow("no such name") << QStringList{u"--exclude=A.JPG"_s}
                                  << u"a.jpg b.jpg sub/a.txt sub/b.txt"_s;
    QTest::addRow("a name") << QStringList{u"--exclude=*.jpg"_s} << u"sub/a.txt sub/b.txt"_s;
    QTest::addRow("a folder") << QStringList{u"--exclude=sub"_s} << u"a.jpg b.jpg"_s;
    QTest::addRow("a path") << QStringList{u"--exclude=sub/a.*"_s, u"--exclude=a.jpg"_s} << QString();
}

void tst_cliFind::leavesOutFilteredFiles()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, found);
    for (const QString &name : {u"a.jpg"_s, u"b.jpg"_s, u".h/x"_s, u".h/y"_s, u".z"_s})
        m_place->write(name, "1234567");
    for (const QString &name : {u"sub/a.txt"_s, u"sub/b.txt"_s})
        m_place->write(name, "12345678");
    for (const QString &name : {u"empty1"_s, u"empty2"_s})
        m_place->write(name, {});
    QStringList expected;
    for (const QString &name : found.split(u' ', Qt::SkipEmptyParts))
        expected.append(u"./"_s + name);
    QStringList paths = m_place->foundPaths(arguments + QStringList{u"."_s});
    std::ranges::sort(paths);
    std::ranges::sort(expected);
    QCOMPARE(paths, expected);
}

void tst_cliFind::keepsOldestOrNewest()
{
    if (!writeFilesOneAfterAnother(
            {m_place->path(u"2"_s), m_place->path(u"3"_s), m_place->path(u"1"_s)}, "equal"))
        QSKIP("the file system keeps no creation times");
    // The modification times are in the opposite order.
    for (const QString &name : {u"1"_s, u"3"_s, u"2"_s})
        setModificationTime(m_place->path(name), qint64(100) * name.toInt());
    if (const QFileInfo oldest(m_place->path(u"2"_s)); oldest.birthTime() == oldest.lastModified())
        QSKIP("the file system keeps no creation times");
    QCOMPARE(m_place->find({u"--format=paths"_s, u"."_s}).output, "./2\n./1\n./3\n");
    QCOMPARE(m_place->find({u"--format=paths"_s, u"--keep=newest"_s, u"."_s}).output, "./1\n./2\n./3\n");
}

void tst_cliFind::givesTheSameOutputWithAnyNumberOfThreads()
{
    for (int i = 0; i < 300; ++i)
        m_place->write(u"%1/%2"_s.arg(i % 7).arg(i), QByteArray(1 + i % 13, char('a' + i % 5)));
    const QByteArray output = m_place->find({u"--threads=1"_s, u"."_s}).output;
    QVERIFY(output.count('\n') > 100);
    for (const QString &threads : {u"1"_s, u"2"_s, u"8"_s})
        QCOMPARE(m_place->find({u"--threads"_s, threads, u"."_s}).output, output);
}

QTEST_GUILESS_MAIN(tst_cliFind)
#include "tst_cliFind.moc"
