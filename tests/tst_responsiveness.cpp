#include "scan/FileCollection.h"
#include "tests/support/DuplicateFiles.h"
#include "tests/support/PoolGate.h"
#include "tests/support/TestFiles.h"
#include "tests/support/WindowDriver.h"

#include <QDeadlineTimer>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>

using Qt::StringLiterals::operator""_s;

namespace {

/// Returns once a scan that has just been started collects files; false on timeout.
///
/// Does not run the event loop, so the collection is the only task.
bool waitForCollection()
{
    const QDeadlineTimer deadline(30'000);
    while (scannedFileCount == 0 && !deadline.hasExpired())
        QThread::yieldCurrentThread();
    return scannedFileCount > 0;
}

} // namespace

/// The window stays usable while its tasks run, even on a machine with one core.
///
/// Qt scales large pictures, such as those of the scan page, on the global pool and waits for it.
class tst_responsiveness : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void paintsWhileThePoolIsBusy();
    void leavesAThreadToTheWindowWhileCollecting();
    void keepsThePoolFreeDuringAWalk();

private:
    QThreadPool *const m_pool = QThreadPool::globalInstance();
    const int m_threads = m_pool->maxThreadCount();
    const QTemporaryDir m_folder;
};

void tst_responsiveness::cleanup()
{
    m_pool->setMaxThreadCount(m_threads);
}

void tst_responsiveness::paintsWhileThePoolIsBusy()
{
    WindowDriver driver;
    driver.setFolders({m_folder.path()});
    const PoolGate gate;
    driver.click("btnStartScan");
    driver.window().repaint();
    QVERIFY(!gate.timedOut());
}

void tst_responsiveness::leavesAThreadToTheWindowWhileCollecting()
{
    for (int i = 0; i < 1000; ++i)
        writeFile(m_folder.filePath(u"%1/%2.txt"_s.arg(i % 50).arg(i)), "content");
    m_pool->setMaxThreadCount(1);
    WindowDriver driver;
    driver.setFolders({m_folder.path()});

    driver.click("btnStartScan");
    QVERIFY(waitForCollection());
    QVERIFY(m_pool->tryStart([] {}));

    QVERIFY(driver.waitForResults());
}

void tst_responsiveness::keepsThePoolFreeDuringAWalk()
{
    constexpr int folders = 200;
    const QTemporaryDir folder;
    writePairs(folder.path(), 250, u"txt"_s);
    WindowDriver driver;
    driver.listFolders(QStringList(folders, folder.path()));
    m_pool->setMaxThreadCount(1);

    driver.click("btnStartScan");
    QVERIFY(waitForCollection());
    QSemaphore done;
    m_pool->start([&done] { done.release(); });
    done.acquire();

    QVERIFY(scannedFileCount < folders * 2 * 250);
}

QTEST_MAIN(tst_responsiveness)
#include "tst_responsiveness.moc"
