#include "scan/ScanThreads.h"
#include "tests/support/CollectedFiles.h"
#include "tests/support/MessageFilter.h"
#include "tests/support/SimulatedDisk.h"
#include "tests/support/TestFiles.h"
#include "tests/support/WindowDriver.h"

#include <QDir>
#include <QScopeGuard>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QThreadPool>

#include <algorithm>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int timeout = 60'000;
constexpr int scans = 20;

/// Number of threads in this process.
qsizetype threadCount()
{
    return QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

bool isAnyTaskRunning()
{
    return QThreadPool::globalInstance()->activeThreadCount() > 0 || scanThreads().activeThreadCount() > 0;
}

} // namespace

/// Stop does not end a scan, so a user can start any number of them. They share a fixed number of threads.
class tst_overlappingScans : public QObject
{
    Q_OBJECT

private slots:
    void countsOnOneThreadWhenNoneIsFree();
    void runOnAFixedNumberOfThreads();
};

/// A walk on the last free thread must not wait for another thread.
void tst_overlappingScans::countsOnOneThreadWhenNoneIsFree()
{
    const QTemporaryDir folder;
    writeFile(folder.filePath(u"sub/file"_s), "x");
    const int threads = scanThreads().maxThreadCount();
    scanThreads().setMaxThreadCount(1);
    QStringList collected;
    QSemaphore done;
    scanThreads().start([&] {
        collected = collect({folder.path()});
        done.release();
    });
    const bool hasEnded = done.tryAcquire(1, timeout);
    scanThreads().setMaxThreadCount(threads);
    QVERIFY(hasEnded);
    QCOMPARE(collected, QStringList{folder.filePath(u"sub/file"_s)});
}

void tst_overlappingScans::runOnAFixedNumberOfThreads()
{
    dropRepeatedMessages();
    const QTemporaryDir folder;
    const QString scanned = folder.filePath(QString::fromLatin1(SimulatedDisk::blocked));
    writeFile(scanned + u"/a"_s, "twice");
    writeFile(scanned + u"/b"_s, "twice");
    WindowDriver driver;
    // The window waits for its scans when it is destroyed.
    const auto answering = qScopeGuard(SimulatedDisk::unblock);
    driver.setFolders({scanned});
    const int cores = QThread::idealThreadCount();
    const qsizetype limit = threadCount() + std::max(8, 2 * cores) + cores;

    for (int i = 0; i < scans; ++i) {
        driver.click("btnStartScan");
        QTest::qWait(1);
        driver.click("btnStopScan");
    }
    // Every scan thread waits for the folder; none of the threads that Qt paints with does.
    QTRY_COMPARE_WITH_TIMEOUT(scanThreads().activeThreadCount(), scanThreads().maxThreadCount(), timeout);
    QTRY_COMPARE_WITH_TIMEOUT(QThreadPool::globalInstance()->activeThreadCount(), 0, timeout);
    qsizetype counted = threadCount();
    SimulatedDisk::unblock();
    while (isAnyTaskRunning()) {
        counted = std::max(counted, threadCount());
        QCoreApplication::processEvents();
    }
    QVERIFY2(counted <= limit, qPrintable(u"%1 threads, at limit %2 allowed"_s.arg(counted).arg(limit)));
    QVERIFY(driver.waitForResults());
    QCOMPARE(driver.filePaths().size(), 2);
}

QTEST_MAIN(tst_overlappingScans)
#include "tst_overlappingScans.moc"
