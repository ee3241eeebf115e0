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
/// Two seconds for the tasks, and time for a busy machine to start and end a process.
constexpr int hungClosingMilliseconds = 20'000 * slowdown;

/// What the program writes when it ends without a task that the system holds.
constexpr QByteArrayView endsWithoutWaiting("ends without waiting");

/// The environment of a program that writes its messages to the standard error output on every system.
QProcessEnvironment environmentWithMessages()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_FORCE_STDERR_LOGGING"_s, u"1"_s);
    return environment;
}

/// Waits until \a program says that it closes its window; false if it ends without.
bool waitForClosing(QProcess &program)
{
    QByteArray output;
    while (!output.contains("closing") && program.waitForReadyRead(patienceMilliseconds))
        output += program.readAllStandardOutput();
    return output.trimmed() == "closing";
}

} // namespace

/// Whatever is going on when the user closes the window, the process is gone soon after, and in good order.
class tst_closingTheProgram : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void endsTheProcess_data();
    void endsTheProcess();
    void endsAlthoughTheDiskHangs_data();
    void endsAlthoughTheDiskHangs();

private:
    QTemporaryDir m_folder;
};

/// Links to one file per folder: as good as so many files, and there in no time on a slow disk.
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

/// Whoever does not give up goes on for many times as long as closing may take: the walk has millions of
/// paths to go through, the analysis several hundred thousand. Under a sanitizer memory and threads are what
/// counts, and fewer will do.
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
    QVERIFY(waitForClosing(program));
    QElapsedTimer closing;
    closing.start();
    QVERIFY2(program.waitForFinished(closingMilliseconds), "still there");
    qInfo("gone after %lld ms", static_cast<long long>(closing.elapsed()));
    const QByteArray messages = program.readAllStandardError();
    QVERIFY2(program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0, messages);
    QVERIFY2(!messages.contains(endsWithoutWaiting), messages);
}

void tst_closingTheProgram::endsAlthoughTheDiskHangs_data()
{
    QTest::addColumn<QString>("hangingName");
    QTest::newRow("when it lists a folder") << u"silent folder"_s;
    QTest::newRow("when it opens a file") << u"silent file"_s;
}

/// A thread that waits for such a disk cannot be ended: neither its task nor its process would ever return.
void tst_closingTheProgram::endsAlthoughTheDiskHangs()
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
    // AddressSanitizer wants to be the first library otherwise.
    environment.insert(
        u"ASAN_OPTIONS"_s, environment.value(u"ASAN_OPTIONS"_s) + u":verify_asan_link_order=0"_s);
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(SCAN_AND_CLOSE), {folder.filePath(u"scanned"_s), u"1"_s, reached, u"0"_s});
    QVERIFY(waitForClosing(program));
    QElapsedTimer closing;
    closing.start();
    QVERIFY2(program.waitForFinished(hungClosingMilliseconds), "still there");
    qInfo("gone after %lld ms", static_cast<long long>(closing.elapsed()));
    const QByteArray messages = program.readAllStandardError();
    QVERIFY2(program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0, messages);
    QVERIFY2(messages.contains(endsWithoutWaiting), messages);
#else
    QSKIP("Nothing can be preloaded here");
#endif
}

QTEST_MAIN(tst_closingTheProgram)
#include "tst_closingTheProgram.moc"
