#include "cli/HeldFile.h"
#include "cli/JsonReport.h"
#include "tests/support/CommandRun.h"
#include "tests/support/RandomBytes.h"
#include "tests/support/RemovalRun.h"
#include "tests/support/ReportFiles.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <thread>

using Qt::StringLiterals::operator""_s;

namespace {

const QString program = QStringLiteral(QUILLORY_CLI);
constexpr int pairs = 25;

/// The files in a journal.
struct JournalledFiles
{
    QSet<QString> begun;
    QSet<QString> done;
};

JournalledFiles readJournal(const QString &path)
{
    JournalledFiles files;
    for (const QByteArray &line : contentOf(path).split('\n')) {
        const QJsonObject entry = QJsonDocument::fromJson(line).object();
        const QString file = entry.value(u"path"_s).toString();
        if (entry.value(u"result"_s) == u"begun"_s)
            files.begun.insert(file);
        if (entry.value(u"result"_s) == u"done"_s)
            files.done.insert(file);
    }
    return files;
}

} // namespace

/// Kills `quillory-cli remove --apply` at random moments.
class tst_killedRemoval : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void losesNothing_data();
    void losesNothing();

private:
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_folder->filePath(name);
    }

    [[nodiscard]] QString kept(int pair) const
    {
        return path(u"kept/%1"_s.arg(pair));
    }
    [[nodiscard]] QString copy(int pair) const
    {
        return path(u"copies/%1"_s.arg(pair));
    }
    [[nodiscard]] bool isActedOn(int pair, const QString &action) const;

    void makePairs();
    /// Starts the program and kills it after \a moment, if there is one. Returns its running time.
    std::chrono::microseconds run(
        const QStringList &arguments, std::optional<std::chrono::microseconds> moment);
    void checkContents() const;
    void checkJournal(const QString &action) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    int m_killed = 0;
};

void tst_killedRemoval::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_killed = 0;
    qputenv("XDG_DATA_HOME", QFile::encodeName(path(u"data"_s)));
}

void tst_killedRemoval::makePairs()
{
    QList<ReportGroup> groups;
    for (int i = 0; i < pairs; ++i) {
        QFile::remove(copy(i));
        writeFile(kept(i), randomBytes(3000, static_cast<quint32>(i)));
        writeFile(copy(i), randomBytes(3000, static_cast<quint32>(i)));
        groups += groupOf({kept(i), copy(i)});
    }
    writeFile(path(u"report"_s), toJson(reportOf(groups)));
    QFile::remove(path(u"journal"_s));
}

std::chrono::microseconds tst_killedRemoval::run(
    const QStringList &arguments, std::optional<std::chrono::microseconds> moment)
{
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    const auto start = std::chrono::steady_clock::now();
    process.start(program, arguments);
    if (moment) {
        std::this_thread::sleep_until(start + *moment);
        process.kill();
    }
    if (!process.waitForFinished(300'000))
        qFatal("The program does not end");
    m_killed += process.exitStatus() == QProcess::CrashExit ? 1 : 0;
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
}

bool tst_killedRemoval::isActedOn(int pair, const QString &action) const
{
    if (action == u"hardlink"_s)
        return identityAt(copy(pair)) == identityAt(kept(pair));
    return !QFile::exists(copy(pair));
}

void tst_killedRemoval::checkContents() const
{
    for (int i = 0; i < pairs; ++i)
        QCOMPARE(contentOf(kept(i)), randomBytes(3000, static_cast<quint32>(i)));
}

void tst_killedRemoval::checkJournal(const QString &action) const
{
    const JournalledFiles journalled = readJournal(path(u"journal"_s));
    QCOMPARE_LE(journalled.begun.size() - journalled.done.size(), 1);
    for (int i = 0; i < pairs; ++i) {
        QVERIFY(!isActedOn(i, action) || journalled.begun.contains(copy(i)));
        QVERIFY(isActedOn(i, action) || !journalled.done.contains(copy(i)));
        if (action == u"hardlink"_s)
            QCOMPARE(contentOf(copy(i)), contentOf(kept(i)));
    }
}

void tst_killedRemoval::losesNothing_data()
{
    QTest::addColumn<QString>("action");
    QStringList actions{u"hardlink"_s, u"delete"_s};
    if (hasTrash)
        actions.append(u"trash"_s);
    for (const QString &action : std::as_const(actions))
        QTest::newRow(qPrintable(action)) << action;
}

/// The environment variable QUILLORY_KILLS sets the number of kills.
void tst_killedRemoval::losesNothing()
{
    QFETCH(const QString, action);
    const int kills =
        qEnvironmentVariableIsSet("QUILLORY_KILLS") ? qEnvironmentVariableIntValue("QUILLORY_KILLS") : 7;
    const QStringList arguments{u"remove"_s, u"--apply"_s, u"--action"_s, action, u"--journal"_s,
        path(u"journal"_s), path(u"report"_s)};
    makePairs();
    const auto wholeRun = run(arguments, std::nullopt);
    checkJournal(action);

    for (int kill = 0; kill < kills && !QTest::currentTestFailed(); ++kill) {
        makePairs();
        run(arguments,
            std::chrono::microseconds(QRandomGenerator::global()->bounded(qint64(wholeRun.count()) + 1)));
        checkContents();
        checkJournal(action);
        // The next run finishes the work and removes temporary files.
        QVERIFY(runCommand(program, arguments).exitCode != 1);
        checkContents();
        QCOMPARE(QDir(path(u"copies"_s)).entryList(QDir::Files | QDir::Hidden).size(),
            action == u"hardlink"_s ? pairs : 0);
    }
    qInfo("%d of %d runs were killed", m_killed, kills);
}

QTEST_GUILESS_MAIN(tst_killedRemoval)
#include "tst_killedRemoval.moc"
