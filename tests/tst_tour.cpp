#include "tests/support/TestFiles.h"

#include <QDirIterator>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int patience = 120'000;
constexpr QSize smallest(640, 480); // the offscreen platform's screen cuts the window

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

/// The tour as a program of its own: what it shows, and what it leaves alone.
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

/// Runs the tour, which makes its sample in an empty folder of the test's.
Outcome tst_tour::run(const QStringList &arguments) const
{
    QDir().mkpath(path(QStringLiteral("temporary")));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &variable : {QStringLiteral("TMPDIR"), QStringLiteral("TMP"), QStringLiteral("TEMP")})
        environment.insert(variable, path(QStringLiteral("temporary")));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.remove(QStringLiteral("QT_LOGGING_RULES"));
    QProcess tour;
    tour.setProcessEnvironment(environment);
    tour.setWorkingDirectory(m_folder.path());
    tour.start(QStringLiteral(TOUR), arguments);
    if (!tour.waitForFinished(patience) || tour.exitStatus() != QProcess::NormalExit)
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
    const QString folder = path(QStringLiteral("looked at"));
    const QStringList names{QStringLiteral("/notes.txt"), QStringLiteral("/backup/notes.txt"),
        QStringLiteral("/backup/notes (2).txt"), QStringLiteral("/alone.txt")};
    for (const QString &name : names)
        writeFile(folder + name, name.contains(u"notes") ? "the same" : "nothing is like me");
    const QMap<QString, QByteArray> before = filesBelow(folder);

    const Outcome outcome = run({QStringLiteral("--output"), path(QStringLiteral("shots")), folder});

    QCOMPARE(outcome.errors, QStringList());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(filesBelow(folder), before);
    QCOMPARE(outcome.output.count(u"[x]"), 2);
    QCOMPARE(outcome.output.count(u"[ ]"), 1);
    QVERIFY(outcome.output.contains(u"Total 1 duplicates, 3 files"));
    const QDir shots(path(QStringLiteral("shots")));
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
    writeFile(path(QStringLiteral("unique/one.txt")), "one");
    writeFile(path(QStringLiteral("unique/two.txt")), "two");
    const Outcome outcome = run({path(QStringLiteral("unique"))});
    QCOMPARE(outcome.errors, QStringList());
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY(outcome.output.contains(u"No duplicate files"));
    // Where nothing else is said, the pictures go to the current folder.
    QVERIFY(QFile::exists(path(QStringLiteral("tour/08-results.png"))));
}

void tst_tour::deletesTheCopiesOfItsOwnSample()
{
    const Outcome outcome = run({});
    QCOMPARE(outcome.errors, QStringList());
    QCOMPARE(outcome.exitCode, 0);
    const qsizetype marked = outcome.output.count(u"[x]");
    QVERIFY(marked > 20);
    QVERIFY(outcome.output.contains(
        QStringLiteral("Deleted %1 files successfully, 0 files failed.").arg(marked)));
    QVERIFY(outcome.output.contains(QStringLiteral("%1 marked files are gone").arg(marked)));
    QVERIFY(QFile::exists(path(QStringLiteral("tour/13-deleted-box.png"))));
    const QDir temporary(path(QStringLiteral("temporary")));
    QCOMPARE(temporary.entryList({QStringLiteral("My files*")}), QStringList());
}

void tst_tour::createsItsSampleInTheGivenFolder()
{
    const QString sample = path(QStringLiteral("anna"));
    const Outcome outcome = run({QStringLiteral("--sample"), sample, QStringLiteral("--dark")});
    QCOMPARE(outcome.errors, QStringList());
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY(outcome.output.contains(QStringLiteral("] ") + sample + QStringLiteral("/Pictures/Lake/")));
    QVERIFY(!QFile::exists(sample));
    QVERIFY(QFile::exists(path(QStringLiteral("tour/10-long-path.png"))));
    QVERIFY(QFile::exists(path(QStringLiteral("tour/10-archives.png"))));
}

void tst_tour::refusesBadInput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addRow("no such folder") << QStringList{QStringLiteral("nowhere")};
    QTest::addRow("a file") << QStringList{QStringLiteral("in the way")};
    QTest::addRow("unknown option") << QStringList{QStringLiteral("--nonsense")};
    QTest::addRow("a sample over a folder that exists")
        << QStringList{QStringLiteral("--sample"), QStringLiteral(".")};
    QTest::addRow("option without its value") << QStringList{QStringLiteral("--output")};
    QTest::addRow("no place for pictures")
        << QStringList{QStringLiteral("--output"), QStringLiteral("in the way/shots")};
}

void tst_tour::refusesBadInput()
{
    QFETCH(const QStringList, arguments);
    writeFile(path(QStringLiteral("in the way")), "a file");
    const Outcome outcome = run(arguments);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.errors.size(), 1);
    QCOMPARE(outcome.output, QString());
}

QTEST_GUILESS_MAIN(tst_tour)
#include "tst_tour.moc"
