#include "scan/FileCollection.h"
#include "tests/support/TestFiles.h"
#include "tests/support/WindowDriver.h"

#include <QDeadlineTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>

/// The window stays usable while its tasks run, also on a machine with one core.
class tst_responsiveness : public QObject
{
    Q_OBJECT

private slots:
    void leavesAThreadToTheWindowWhileCollecting();
};

/// Painting a large scaled picture, as the scan page does, waits for a thread of the global pool.
void tst_responsiveness::leavesAThreadToTheWindowWhileCollecting()
{
    const QTemporaryDir folder;
    for (int i = 0; i < 1000; ++i)
        writeFile(folder.filePath(QStringLiteral("%1/%2.txt").arg(i % 50).arg(i)), "content");
    QThreadPool *const pool = QThreadPool::globalInstance();
    pool->setMaxThreadCount(1);
    WindowDriver driver;
    driver.setFolders({folder.path()});

    driver.click("btnStartScan");
    // Without the event loop, so that nothing but the collection can be running.
    const QDeadlineTimer deadline(30'000);
    while (scannedFileCount == 0 && !deadline.hasExpired())
        QThread::yieldCurrentThread();
    QVERIFY(scannedFileCount > 0);
    QVERIFY(pool->tryStart([] {}));

    QVERIFY(driver.waitForResults());
}

QTEST_MAIN(tst_responsiveness)
#include "tst_responsiveness.moc"
