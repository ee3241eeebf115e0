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
constexpr int timesListed = 100;
constexpr int filesInAll = files * timesListed;

/// Number of read calls of this process so far; 0 if the system does not report it.
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

/// A window that is closed during a scan ends its tasks early and leaves none running.
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
    void openWindowWith(int listings);

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
    // Calls that are still queued must not reach the deleted window.
    QCoreApplication::processEvents();
}

void tst_closingTheWindow::openWindowWith(int listings)
{
    m_driver.reset(new WindowDriver);
    m_driver->listFolders(QStringList(listings, m_folder.path()));
}

/// The task holds a pointer to the window, so the window waits until the task has run.
void tst_closingTheWindow::beforeTheWalkBegins()
{
    openWindowWith(timesListed);
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
    openWindowWith(timesListed);
    m_driver->click("btnStartScan");
    // Nothing reports the start of the walk. It starts immediately and counts for much longer than this.
    QThread::msleep(5);
    m_driver.reset();
    QVERIFY(scannedFileCount < filesInAll);
}

void tst_closingTheWindow::duringTheCollectingPass()
{
    openWindowWith(timesListed);
    m_driver->click("btnStartScan");
    while (scannedFileCount == 0)
        QThread::yieldCurrentThread();
    m_driver.reset();
    QVERIFY(scannedFileCount < filesInAll);
}

void tst_closingTheWindow::duringTheAnalysis()
{
    openWindowWith(timesListed);
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
    // The first rows are due after the window is gone.
    m_driver.reset();
    QTest::qWait(150);
}

void tst_closingTheWindow::afterStop()
{
    openWindowWith(timesListed);
    m_driver->click("btnStartScan");
    m_driver->click("btnStopScan");
    m_driver.reset();
    QVERIFY(scannedFileCount < filesInAll);
}

QTEST_MAIN(tst_closingTheWindow)
#include "tst_closingTheWindow.moc"
