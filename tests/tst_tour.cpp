#include "tests/support/TestFiles.h"

#include <QDirIterator>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int timeout = 120'000;
constexpr QSize smallest(640, 480); // the screen of the offscreen platform is smaller than the window

struct Outcome
{
    int exitCode = -1;
    QString output;
    QStringList errors;
};

QMap<QString, QByteArray> filesBelow(const QString &folder)
{
    QMap<QString, QByteArray> contents;
    QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
            contents.insert(file.fileName(), file.readAll());
    }
    return contents;
}

} // namespace

/// The tour, started as a program: what it shows and what it does not change.
class tst_tour : public QObject
{
    Q_OBJECT

private slots:
    void deletesNothingInGivenFolders();
    void showsFoldersWithoutDuplicates();
    void deletesTheCopiesOfItsOwnSample();
    void createsItsSampleInTheGivenFolder();
    void refusesBadInput_data();
    void refusesBadInput();

private:
    [[nodiscard]] Outcome run(const QStringList &arguments) const;
    [[nodiscard]] QString path(const QString &name) const;

    QTemporaryDir m_folder;
};

/// Runs the tour with an empty folder for its sample.
Outcome tst_tour::run(const QStringList &arguments) const
{
    QDir().mkpath(path(u"temporary"_s));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &variable : {u"TMPDIR"_s, u"TMP"_s, u"TEMP"_s})
        environment.insert(variable, path(u"temporary"_s));
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    environment.remove(u"QT_LOGGING_RULES"_s);
    QProcess tour;
    tour.setProcessEnvironment(environment);
    tour.setWorkingDirectory(m_folder.path());
    tour.start(QStringLiteral(TOUR), arguments);
    if (!tour.waitForFinished(timeout) || tour.exitStatus() != QProcess::NormalExit)
        return {};
    return {tour.exitCode(), QString::fromUtf8(tour.readAllStandardOutput()),
        QString::fromUtf8(tour.readAllStandardError()).split(u'\n', Qt::SkipEmptyParts)};
}

QString tst_tour::path(const QString &name) const
{
    return m_folder.filePath(name);
}

void tst_tour::deletesNothingInGivenFolders()
{
    const QString folder = path(u"given"_s);
    const QStringList names{
        u"/notes.txt"_s, u"/backup/notes.txt"_s, u"/backup/notes (2).txt"_s, u"/alone.txt"_s};
    for (const QString &name : names)
        writeFile(folder + name, name.contains(u"notes") ? "the same" : "nothing is like me");
    const QMap<QString, QByteArray> before = filesBelow(folder);

    const Outcome outcome = run({u"--output"_s, path(u"shots"_s), folder});

    QCOMPARE(outcome.errors, QStringList());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(filesBelow(folder), before);
    QCOMPARE(outcome.output.count(u"[x]"), 2);
    QCOMPARE(outcome.output.count(u"[ ]"), 1);
    QVERIFY(outcome.output.contains(u"Total 1 duplicates, 3 files"));
    const QDir shots(path(u"shots"_s));
    const QStringList pictures = shots.entryList(QDir::Files, QDir::Name);
    QVERIFY(pictures.contains(u"05-scanning.png") && pictures.contains(u"12-selected.png"));
    QVERIFY(!pictures.contains(u"13-deleted-box.png"));
    for (const QString &picture : pictures) {
        QVERIFY(outcome.output.contains(picture));
        const QSize size = QImage(shots.filePath(picture)).size();
        QCOMPARE(size.expandedTo(smallest), size);
    }
}

void tst_tour::showsFoldersWithoutDuplicates()
{
    writeFile(path(u"unique/one.txt"_s), "one");
    writeFile(path(u"unique/two.txt"_s), "two");

    const Outcome outcome = run({path(u"unique"_s)});
    QCOMPARE(outcome.errors, QStringList());
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY(outcome.output.contains(u"No duplicate files"));
    // By default the pictures go to the current folder.
    QVERIFY(QFile::exists(path(u"tour/08-results.png"_s)));
}

void tst_tour::deletesTheCopiesOfItsOwnSample()
{
    const Outcome outcome = run({});
    QCOMPARE(outcome.errors, QStringList());
    QCOMPARE(outcome.exitCode, 0);
    const qsizetype marked = outcome.output.count(u"[x]");
    QVERIFY(marked > 20);
    QVERIFY(outcome.output.contains(u"Deleted %1 files successfully, 0 files failed."_s.arg(marked)));
    QVERIFY(outcome.output.contains(u"%1 marked files are gone"_s.arg(marked)));
    QVERIFY(QFile::exists(path(u"tour/13-deleted-box.png"_s)));
    const QDir temporary(path(u"temporary"_s));
    QCOMPARE(temporary.entryList({u"My files*"_s}), QStringList());
}

void tst_tour::createsItsSampleInTheGivenFolder()
{
    const QString sample = path(u"anna"_s);
    const Outcome outcome = run({u"--sample"_s, sample, u"--dark"_s});
    QCOMPARE(outcome.errors, QStringList());
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY(outcome.output.contains(u"] "_s + sample + u"/Pictures/Lake/"_s));
    QVERIFY(!QFile::exists(sample));
    QVERIFY(QFile::exists(path(u"tour/10-long-path.png"_s)));
    QVERIFY(QFile::exists(path(u"tour/10-archives.png"_s)));
}

void tst_tour::refusesBadInput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addRow("no such folder") << QStringList{u"nowhere"_s};
    QTest::addRow("a file") << QStringList{u"in the way"_s};
    QTest::addRow("unknown option") << QStringList{u"--nonsense"_s};
    QTest::addRow("the sample folder exists") << QStringList{u"--sample"_s, u"."_s};
    QTest::addRow("option without its value") << QStringList{u"--output"_s};
    QTest::addRow("output below a file") << QStringList{u"--output"_s, u"in the way/shots"_s};
}

void tst_tour::refusesBadInput()
{
    QFETCH(const QStringList, arguments);
    writeFile(path(u"in the way"_s), "a file");
    const Outcome outcome = run(arguments);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.errors.size(), 1);
    QCOMPARE(outcome.output, QString());
}

QTEST_GUILESS_MAIN(tst_tour)
#include "tst_tour.moc"
