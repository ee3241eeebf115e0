#include "scan/FileCollection.h"
#include "tests/support/TestFiles.h"
#include "tests/support/WindowDriver.h"

#include <QDeadlineTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>

/// The window stays usable while its tasks run, even on a machine with one core.
class tst_responsiveness : public QObject
{
    Q_OBJECT

private slots:
    void leavesAThreadToTheWindowWhileCollecting();
};

/// The scan page paints a large scaled picture, for which Qt waits for a thread of the global pool.
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
    // The event loop does not run, so the collection is the only task.
    const QDeadlineTimer deadline(30'000);
    while (scannedFileCount == 0 && !deadline.hasExpired())
        QThread::yieldCurrentThread();
    QVERIFY(scannedFileCount > 0);
    QVERIFY(pool->tryStart([] {}));

    QVERIFY(driver.waitForResults());
}

QTEST_MAIN(tst_responsiveness)
#include "tst_responsiveness.moc"
