#include "scan/FileCollection.h"
#include "tests/support/PoolGate.h"
#include "tests/support/TestFiles.h"
#include "tests/support/WindowDriver.h"

#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QThreadPool>

#include <atomic>

using Qt::StringLiterals::operator""_s;

namespace {

// Enough work to be interrupted: the same files, listed many times.
constexpr int files = 1000;
constexpr int places = 100;
constexpr int filesInAll = files * places;

/// How often the process has read from a file so far; 0 where the system does not tell.
qint64 readsOfThisProcess()
{
    QFile statistics(u"/proc/self/io"_s);
    if (!statistics.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : statistics.readAll().split('\n')) {
        if (line.startsWith("syscr:"))
            return line.mid(6).trimmed().toLongLong();
    }
    return 0;
}

} // namespace

/// The window goes away in the middle of something: its tasks end early, and nothing is left running.
class tst_closingTheWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void beforeTheWalkBegins();
    void duringTheCountingPass();
    void duringTheCollectingPass();
    void duringTheAnalysis();
    void afterTheDelivery();
    void afterStop();

private:
    void openWindowWith(int numberOfPlaces);

    QTemporaryDir m_folder;
    QScopedPointer<WindowDriver> m_driver;
};

void tst_closingTheWindow::initTestCase()
{
    for (int i = 0; i < files; ++i)
        writeFile(m_folder.filePath(u"%1/%2"_s.arg(i / 200).arg(i)), QByteArray());
}

void tst_closingTheWindow::cleanup()
{
    m_driver.reset();
    QVERIFY(QThreadPool::globalInstance()->waitForDone(30'000));
    // Whatever was still queued for the window must not reach it.
    QCoreApplication::processEvents();
}

void tst_closingTheWindow::openWindowWith(int numberOfPlaces)
{
    m_driver.reset(new WindowDriver);
    m_driver->listFolders(QStringList(numberOfPlaces, m_folder.path()));
}

// The task holds a pointer to the window, so the window stays until the task has had its turn.
void tst_closingTheWindow::beforeTheWalkBegins()
{
    openWindowWith(places);
    PoolGate gate;
    m_driver->click("btnStartScan");
    std::atomic<bool> opened = false;
    const QScopedPointer<QThread> opener(QThread::create([&] {
        QThread::msleep(50);
        opened = true;
        gate.open();
    }));
    opener->start();
    m_driver.reset();
    const bool waited = opened;
    opener->wait();
    QVERIFY(waited);
    QVERIFY(scannedFileCount < filesInAll);
}

void tst_closingTheWindow::duringTheCountingPass()
{
    openWindowWith(places);
    m_driver->click("btnStartScan");
    // Nothing tells when the walk has begun; it begins at once and counts for much longer than this.
    QThread::msleep(5);
    m_driver.reset();
    QVERIFY(scannedFileCount < filesInAll);
}

void tst_closingTheWindow::duringTheCollectingPass()
{
    openWindowWith(places);
    m_driver->click("btnStartScan");
    while (scannedFileCount == 0)
        QThread::yieldCurrentThread();
    m_driver.reset();
    QVERIFY(scannedFileCount < filesInAll);
}

void tst_closingTheWindow::duringTheAnalysis()
{
    openWindowWith(places);
    m_driver->click("btnStartScan");
    QVERIFY(QTest::qWaitFor(
        [this] { return m_driver->labelText("labelCurrentFile") == u"Analyzing..."; }, 60'000));
    const qint64 readsBefore = readsOfThisProcess();
    m_driver.reset();
    QVERIFY(readsOfThisProcess() - readsBefore < filesInAll);
}

void tst_closingTheWindow::afterTheDelivery()
{
    openWindowWith(1);
    m_driver->click("btnStartScan");
    QVERIFY(QTest::qWaitFor([this] { return m_driver->page() == u"duplicatespage"; }, 60'000));
    // The first rows come a moment later, to a window that is gone by then.
    m_driver.reset();
    QTest::qWait(150);
}

void tst_closingTheWindow::afterStop()
{
    openWindowWith(places);
    m_driver->click("btnStartScan");
    m_driver->click("btnStopScan");
    m_driver.reset();
    QVERIFY(scannedFileCount < filesInAll);
}

QTEST_MAIN(tst_closingTheWindow)
#include "tst_closingTheWindow.moc"
