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

} // namespace

/// Whatever is going on when the user closes the window, the process is gone soon after, and in good order.
class tst_closingTheProgram : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void endsTheProcess_data();
    void endsTheProcess();

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
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const QString scanned = from == u"results"_s ? m_folder.filePath(u"0"_s) : m_folder.path();
    program.start(
        QStringLiteral(SCAN_AND_CLOSE), {scanned, QString::number(times), from, QString::number(delay)});
    QByteArray output;
    while (!output.contains("closing") && program.waitForReadyRead(patienceMilliseconds))
        output += program.readAllStandardOutput();
    QCOMPARE(output.trimmed(), "closing");
    QElapsedTimer closing;
    closing.start();
    QVERIFY2(program.waitForFinished(closingMilliseconds), "still there");
    qInfo("gone after %lld ms", static_cast<long long>(closing.elapsed()));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
}

QTEST_MAIN(tst_closingTheProgram)
#include "tst_closingTheProgram.moc"
