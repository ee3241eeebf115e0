#include "tests/support/TestFiles.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int files = 2000;
constexpr int patienceMilliseconds = 60'000;
constexpr int closingMilliseconds = 2000;

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

void tst_closingTheProgram::initTestCase()
{
    for (int i = 0; i < files; ++i)
        writeFile(m_folder.filePath(u"%1/%2.txt"_s.arg(i % 20).arg(i)), "the same everywhere");
}

/// A walk and an analysis of 50 times the folder take far longer than any of the delays.
void tst_closingTheProgram::endsTheProcess_data()
{
    QTest::addColumn<int>("times");
    QTest::addColumn<QString>("from");
    QTest::addColumn<int>("delay");
    QTest::newRow("as soon as the scan is started") << 50 << u"start"_s << 0;
    for (const int delay : {10, 50, 200, 600})
        QTest::addRow("%d ms into the scan", delay) << 50 << u"start"_s << delay;
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
    program.start(QStringLiteral(SCAN_AND_CLOSE),
        {m_folder.path(), QString::number(times), from, QString::number(delay)});
    QByteArray output;
    while (!output.contains("closing") && program.waitForReadyRead(patienceMilliseconds))
        output += program.readAllStandardOutput();
    QCOMPARE(output.trimmed(), "closing");
    QElapsedTimer closing;
    closing.start();
    QVERIFY(program.waitForFinished(patienceMilliseconds));
    QVERIFY2(closing.elapsed() < closingMilliseconds, QByteArray::number(closing.elapsed()));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
}

QTEST_MAIN(tst_closingTheProgram)
#include "tst_closingTheProgram.moc"
