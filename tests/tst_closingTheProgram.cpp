#include "tests/support/Slowdown.h"
#include "tests/support/TestFiles.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int folders = 40;
constexpr int filesPerFolder = 500;
constexpr int patienceMilliseconds = 120'000;
constexpr int closingMilliseconds = 2000 * slowdown;
/// Two seconds for the tasks, and the time that a busy machine needs to end a process.
constexpr int hungClosingMilliseconds = 20'000 * slowdown;

/// Part of the message that the program writes when it ends although a task still runs.
constexpr QByteArrayView endsWithoutWaiting("ends without waiting");

/// The environment of a program that writes its messages to the standard error output on every system.
QProcessEnvironment environmentWithMessages()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_FORCE_STDERR_LOGGING"_s, u"1"_s);
    return environment;
}

/// The fault of \a program, which must close its window and then end normally within \a milliseconds; empty
/// if there is none.
QByteArray faultOfClosing(QProcess &program, int milliseconds)
{
    QByteArray output;
    while (!output.contains("closing") && program.waitForReadyRead(patienceMilliseconds))
        output += program.readAllStandardOutput();
    if (output.trimmed() != "closing")
        return "did not close its window: " + program.readAllStandardError();
    QElapsedTimer closing;
    closing.start();
    if (!program.waitForFinished(milliseconds))
        return "still there";
    qInfo("gone after %lld ms", static_cast<long long>(closing.elapsed()));
    if (program.exitStatus() != QProcess::NormalExit || program.exitCode() != 0)
        return "ended with an error: " + program.readAllStandardError();
    return {};
}

} // namespace

/// The process ends normally and soon after its window is closed, whatever it is doing.
class tst_closingTheProgram : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void endsTheProcess_data();
    void endsTheProcess();
    void endsWhenTheDiskHangs_data();
    void endsWhenTheDiskHangs();

private:
    QTemporaryDir m_folder;
};

/// Hard links to one file per folder: faster to create on a slow disk than files.
void tst_closingTheProgram::initTestCase()
{
    for (int folder = 0; folder < folders; ++folder) {
        const QString path = m_folder.filePath(QString::number(folder));
        const std::filesystem::path original((path + u"/0.txt"_s).toStdU16String());
        writeFile(path + u"/0.txt"_s, QByteArray(10'000, 'x'));
        for (int link = 1; link < filesPerFolder; ++link)
            std::filesystem::create_hard_link(original, (path + u"/%1.txt"_s.arg(link)).toStdU16String());
    }
}

/// A task that does not end early exceeds the time limit many times: the walk has millions of paths, the
/// analysis several hundred thousand. A sanitizer, which looks for faults in memory and threads, needs fewer.
void tst_closingTheProgram::endsTheProcess_data()
{
    constexpr int forTheWalk = 500 / slowdown;
    constexpr int forTheAnalysis = 20 / slowdown;
    QTest::addColumn<int>("times");
    QTest::addColumn<QString>("from");
    QTest::addColumn<int>("delay");
    for (const int delay : {0, 10, 50, 200, 600})
        QTest::addRow("%d ms into the walk", delay) << forTheWalk << u"start"_s << delay;
    for (const int delay : {0, 200})
        QTest::addRow("%d ms into the analysis", delay) << forTheAnalysis << u"analysis"_s << delay;
    QTest::newRow("while the loading panel is shown") << 1 << u"results"_s << 0;
    QTest::newRow("with results in the tree") << 1 << u"results"_s << 400;
}

void tst_closingTheProgram::endsTheProcess()
{
    QFETCH(const int, times);
    QFETCH(const QString, from);
    QFETCH(const int, delay);
    QProcess program;
    program.setProcessEnvironment(environmentWithMessages());
    const QString scanned = from == u"results"_s ? m_folder.filePath(u"0"_s) : m_folder.path();
    program.start(
        QStringLiteral(SCAN_AND_CLOSE), {scanned, QString::number(times), from, QString::number(delay)});
    QCOMPARE(faultOfClosing(program, closingMilliseconds), QByteArray());
    const QByteArray messages = program.readAllStandardError();
    // With a sanitizer, the tasks of a busy machine may need more than two seconds.
    QVERIFY2(slowdown > 1 || !messages.contains(endsWithoutWaiting), messages);
}

void tst_closingTheProgram::endsWhenTheDiskHangs_data()
{
    QTest::addColumn<QString>("hangingName");
    QTest::newRow("while listing a folder") << u"silent folder"_s;
    QTest::newRow("while opening a file") << u"silent file"_s;
}

/// A thread that waits for a hanging disk never returns, so the process must end without it.
void tst_closingTheProgram::endsWhenTheDiskHangs()
{
#ifdef HANGING_DISK
    QFETCH(const QString, hangingName);
    const QTemporaryDir folder;
    writeFile(folder.filePath(u"scanned/silent folder/a"_s), "content");
    writeFile(folder.filePath(u"scanned/silent file"_s), "content");
    const QString reached = folder.filePath(u"reached"_s);
    QProcess program;
    QProcessEnvironment environment = environmentWithMessages();
    environment.insert(u"LD_PRELOAD"_s, QStringLiteral(HANGING_DISK));
    environment.insert(u"QUILLORY_HANGING_NAME"_s, hangingName);
    environment.insert(u"QUILLORY_HANG_REACHED"_s, reached);
    // Without this, AddressSanitizer insists on being the first library.
    environment.insert(
        u"ASAN_OPTIONS"_s, environment.value(u"ASAN_OPTIONS"_s) + u":verify_asan_link_order=0"_s);
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(SCAN_AND_CLOSE), {folder.filePath(u"scanned"_s), u"1"_s, reached, u"0"_s});
    QCOMPARE(faultOfClosing(program, hungClosingMilliseconds), QByteArray());
    const QByteArray messages = program.readAllStandardError();
    QVERIFY2(messages.contains(endsWithoutWaiting), messages);
#else
    QSKIP("This system cannot preload a library");
#endif
}

QTEST_MAIN(tst_closingTheProgram)
#include "tst_closingTheProgram.moc"
