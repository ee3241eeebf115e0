#include "tests/support/RemovalRun.h"
#include "tests/support/ReportFiles.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

/// The journal of a removal.
class tst_removalJournal : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void recordsEachActionBeforeAndAfter();
    void recordsWhyAFileWasLeftAlone();
    void recordsAnInterruption();
    void isWrittenBeforeTheAction();
    void isAppended();
    void beginsANewLine();
    void isNotWrittenByAPlan();
    void endsTheRunWhenItCannotBeOpened_data();
    void endsTheRunWhenItCannotBeOpened();
    void endsTheRunWhenTheDiskIsFull();
    void isNoFileOfTheReport_data();
    void isNoFileOfTheReport();

private:
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_folder->filePath(name);
    }

    [[nodiscard]] Report abcReport() const
    {
        return reportOf({groupOf({path(u"a"_s), path(u"b"_s), path(u"c"_s)})});
    }

    [[nodiscard]] RemovalOptions deleting(const QString &journal) const
    {
        return {.apply = true, .action = RemovalAction::Delete, .journal = journal};
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

/// The lines of the journal as "path result", with file names only.
QStringList linesOf(const QString &journal)
{
    QStringList lines;
    QByteArray bytes = contentOf(journal);
    if (!bytes.endsWith('\n'))
        return {u"(ends within a line)"_s};
    bytes.chop(1);
    for (const QByteArray &line : bytes.split('\n')) {
        const QJsonObject entry = QJsonDocument::fromJson(line).object();
        lines += QFileInfo(entry.value(u"path"_s).toString()).fileName() + u' ' +
                 entry.value(u"result"_s).toString();
    }
    return lines;
}

} // namespace

void tst_removalJournal::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    for (const QString &name : {u"a"_s, u"b"_s, u"c"_s})
        writeFile(path(name), "content");
}

void tst_removalJournal::recordsEachActionBeforeAndAfter()
{
    const QDateTime before = QDateTime::currentDateTimeUtc();
    QCOMPARE(carryOut(abcReport(), deleting(path(u"j"_s))).exitCode, ExitDone);
    QCOMPARE(linesOf(path(u"j"_s)), (QStringList{u"b begun"_s, u"b done"_s, u"c begun"_s, u"c done"_s}));

    const QByteArray first = contentOf(path(u"j"_s)).split('\n').first();
    QJsonObject entry = QJsonDocument::fromJson(first).object();
    const QString time = entry.take(u"time"_s).toString();
    QVERIFY2(time.endsWith(u'Z'), qPrintable(time));
    QVERIFY(QDateTime::fromString(time, Qt::ISODateWithMs) >= before);
    QCOMPARE(entry, (QJsonObject{{u"action"_s, u"delete"_s}, {u"kept"_s, path(u"a"_s)},
                        {u"path"_s, path(u"b"_s)}, {u"result"_s, u"begun"_s}, {u"size"_s, 7}}));
    QVERIFY(first.startsWith(R"({"action":"delete","kept":)"));
}

void tst_removalJournal::recordsWhyAFileWasLeftAlone()
{
    const Report report = abcReport();
    writeFile(path(u"b"_s), "Content");
    QCOMPARE(carryOut(report, deleting(path(u"j"_s))).exitCode, ExitRefused);
    QCOMPARE(linesOf(path(u"j"_s)),
        (QStringList{u"b begun"_s, u"b contents differ"_s, u"c begun"_s, u"c done"_s}));
}

void tst_removalJournal::recordsAnInterruption()
{
    int asked = 0;
    QCOMPARE(carryOut(abcReport(), deleting(path(u"j"_s)), {}, [&] { return ++asked == 2; }).exitCode,
        ExitInterrupted);
    QCOMPARE(linesOf(path(u"j"_s)), (QStringList{u"b begun"_s, u"b interrupted"_s}));
}

void tst_removalJournal::isWrittenBeforeTheAction()
{
    QStringList seen;
    const RemovalOutcome outcome = carryOut(abcReport(), deleting(path(u"j"_s)),
        [&](const QString & /*candidate*/) { seen += linesOf(path(u"j"_s)).last(); });
    QCOMPARE(outcome.exitCode, ExitDone);
    QCOMPARE(seen, (QStringList{u"b begun"_s, u"c begun"_s}));
}

void tst_removalJournal::isAppended()
{
    writeFile(path(u"j"_s), "{}\n");
    QCOMPARE(carryOut(abcReport(), deleting(path(u"j"_s))).exitCode, ExitDone);
    QVERIFY(contentOf(path(u"j"_s)).startsWith("{}\n{\"action\""));
}

/// A killed run can leave half a line.
void tst_removalJournal::beginsANewLine()
{
    writeFile(path(u"j"_s), R"({"action":"del)");
    QCOMPARE(carryOut(abcReport(), deleting(path(u"j"_s))).exitCode, ExitDone);
    QVERIFY(contentOf(path(u"j"_s)).startsWith("{\"action\":\"del\n{\"action\""));
}

void tst_removalJournal::isNotWrittenByAPlan()
{
    RemovalOptions options = deleting(path(u"j"_s));
    options.apply = false;
    QCOMPARE(carryOut(abcReport(), options).exitCode, ExitDone);
    QVERIFY(!QFile::exists(path(u"j"_s)));
}

void tst_removalJournal::endsTheRunWhenItCannotBeOpened_data()
{
    QTest::addColumn<QString>("journal");
    QTest::newRow("missing folder") << u"missing/j"_s;
    QTest::newRow("folder") << u"."_s;
    QTest::newRow("below a file") << u"a/j"_s;
    QTest::newRow("device") << u"/dev/full"_s;
    QTest::newRow("pipe") << u"pipe"_s;
}

void tst_removalJournal::endsTheRunWhenItCannotBeOpened()
{
    QFETCH(const QString, journal);
    if (journal == u"pipe"_s && !makePipe(path(journal)))
        QSKIP("No pipes here");
    const QString place = journal.startsWith(u'/') ? journal : path(journal);
    const RemovalOutcome outcome = carryOut(abcReport(), deleting(place));
    QCOMPARE(outcome.exitCode, ExitFailed);
    QCOMPARE(outcome.errors.size(), 1);
    QVERIFY2(outcome.errors.first().startsWith(u"cannot write the journal "_s),
        qPrintable(outcome.errors.first()));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
}

void tst_removalJournal::endsTheRunWhenTheDiskIsFull()
{
    QVERIFY(QDir().mkpath(path(u"disk"_s)));
    SmallDisk disk(path(u"disk"_s));
    if (!disk.obstacle().isEmpty())
        QSKIP(qPrintable(disk.obstacle()));
    // The journal can only grow to the end of its block.
    const QString journal = path(u"disk/j"_s);
    writeFile(journal, QByteArray(3000, ' ') + '\n');
    QVERIFY(disk.fillUp(u"filler"_s));
    QStringList files{path(u"a"_s)};
    for (int i = 0; i < 50; ++i) {
        files += path(u"copy%1"_s.arg(i));
        writeFile(files.last(), "content");
    }

    const RemovalOutcome outcome = carryOut(reportOf({groupOf(files)}), deleting(journal));
    QCOMPARE(outcome.exitCode, ExitFailed);
    QCOMPARE(outcome.errors.size(), 1);
    const QStringList lines = linesOf(journal);
    const auto begun = lines.filter(u" begun"_s).size();
    qsizetype gone = 0;
    for (const QString &file : files)
        gone += QFile::exists(file) ? 0 : 1;
    QVERIFY(begun > 0 && begun < 50);
    // Only the line after the last action may be missing.
    QCOMPARE(gone, begun);
    QVERIFY(lines.filter(u" done"_s).size() >= begun - 1);
}

void tst_removalJournal::isNoFileOfTheReport_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("kept") << u"a"_s;
    QTest::newRow("marked") << u"b"_s;
}

void tst_removalJournal::isNoFileOfTheReport()
{
    QFETCH(const QString, target);
    QStringList journals{path(target), path(u"./"_s + target)};
    if (makeLink(path(target), path(u"j"_s)))
        journals += path(u"j"_s);
    for (const QString &journal : journals) {
        QCOMPARE(carryOut(abcReport(), deleting(journal)).exitCode, ExitFailed);
        QCOMPARE(contentOf(path(target)), "content");
    }
}

QTEST_GUILESS_MAIN(tst_removalJournal)
#include "tst_removalJournal.moc"
