#include "analysis/FileHash.h"
#include "tests/support/PageCache.h"
#include "tests/support/PoolThreads.h"
#include "tests/support/RandomBytes.h"
#include "tests/support/TestFiles.h"

#include <QFileInfo>
#include <QMutex>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QThreadPool>

#include <atomic>
#include <memory>

#ifdef Q_OS_LINUX
#include <sys/resource.h>
#endif

namespace {

constexpr int chunk = 4096;
/// A Linux file whose reads always count as not cached.
const QString neverCached = QStringLiteral("/proc/version");

QList<QString> pathsOf(const QList<FileHash> &hashes)
{
    QList<QString> paths;
    for (const FileHash &hash : hashes)
        paths.append(hash.filePath);
    return paths;
}

QList<QByteArray> digestsOf(const QList<FileHash> &hashes)
{
    QList<QByteArray> digests;
    for (const FileHash &hash : hashes)
        digests.append(hash.hash);
    return digests;
}

} // namespace

/// The fingerprints of many files, computed on several threads.
class tst_concurrentHashing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void keepsTheOrder_data();
    void keepsTheOrder();
    void readsFilesThatAreNotCached();
    void holdsFewFilesOpen();
    void returnsNothingForNoPaths();
    void keepsDuplicatesAndFilesThatCannotBeOpened();
    void returnsPathsUnchanged();
    void completesOnPoolThreads_data();
    void completesOnPoolThreads();
    void restoresThePoolSize();
    void hashesNothingOnceAbandoned();
    void doesNotWaitOnceAbandoned();

private:
    QTemporaryDir m_folder;
    QList<QString> m_paths;
    /// The fingerprints of m_paths, computed one by one.
    QList<QByteArray> m_digests;
};

void tst_concurrentHashing::initTestCase()
{
    QVERIFY(m_folder.isValid());
    // Large and small files in turn, so that later files are ready before earlier ones.
    for (int i = 0; i < 300; ++i) {
        m_paths.append(m_folder.filePath(QString::number(i)));
        writeFile(m_paths.last(), randomBytes(i % 2 == 0 ? 20000 + i : i, static_cast<quint32>(i)));
        m_digests.append(computeFileHash(m_paths.last(), chunk));
    }
}

void tst_concurrentHashing::keepsTheOrder_data()
{
    QTest::addColumn<int>("threads");
    for (const int threads : {1, 2, 8})
        QTest::addRow("%d threads", threads) << threads;
}

void tst_concurrentHashing::keepsTheOrder()
{
    QFETCH(const int, threads);
    const PoolSize size(threads);
    const QList<FileHash> hashes = computeHashesConcurrently(m_paths);
    QCOMPARE(pathsOf(hashes), m_paths);
    QCOMPARE(digestsOf(hashes), m_digests);
}

void tst_concurrentHashing::readsFilesThatAreNotCached()
{
    // Only every third file is cached.
    for (qsizetype i = 0; i < m_paths.size(); ++i) {
        if (i % 3 != 0 && QFileInfo(m_paths.at(i)).size() > 0 && !dropFromPageCache(m_paths.at(i)))
            QSKIP("This file system keeps its files cached");
    }
    const QList<FileHash> hashes = computeHashesConcurrently(m_paths);
    QCOMPARE(pathsOf(hashes), m_paths);
    QCOMPARE(digestsOf(hashes), m_digests);
}

/// A machine with many cores may allow few open files.
void tst_concurrentHashing::holdsFewFilesOpen()
{
#ifdef Q_OS_LINUX
    const QByteArray digest = computeFileHash(neverCached, chunk);
    QVERIFY(!digest.isEmpty());
    const PoolSize size(64);
    rlimit before = {};
    QCOMPARE(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit few = {200, before.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &few), 0);
    const auto sleepBriefly = [] {
        QThread::usleep(100);
        return false;
    };
    const QList<FileHash> hashes =
        startComputingHashes(QList<QString>(2'500, neverCached), sleepBriefly).result();
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &before), 0);
    QCOMPARE(digestsOf(hashes), QList<QByteArray>(2'500, digest));
#else
    QSKIP("Only Linux has files that are never cached");
#endif
}

void tst_concurrentHashing::returnsNothingForNoPaths()
{
    QCOMPARE(computeHashesConcurrently({}).size(), 0);
}

void tst_concurrentHashing::keepsDuplicatesAndFilesThatCannotBeOpened()
{
    const QString missing = m_folder.filePath(QStringLiteral("missing"));
    const QList<QString> paths{
        missing, m_paths.at(0), m_folder.path(), m_paths.at(0), missing, m_paths.at(1)};
    const QList<FileHash> hashes = computeHashesConcurrently(paths);
    QCOMPARE(pathsOf(hashes), paths);
    QCOMPARE(digestsOf(hashes),
        (QList<QByteArray>{{}, m_digests.at(0), {}, m_digests.at(0), {}, m_digests.at(1)}));
}

void tst_concurrentHashing::returnsPathsUnchanged()
{
    const QString roundabout = m_folder.path() + QStringLiteral("//./7");
    const QList<FileHash> hashes = computeHashesConcurrently({roundabout});
    QCOMPARE(pathsOf(hashes), QList<QString>{roundabout});
    QCOMPARE(digestsOf(hashes), QList<QByteArray>{m_digests.at(7)});
}

void tst_concurrentHashing::completesOnPoolThreads_data()
{
    QTest::addColumn<int>("threads");
    QTest::newRow("on the only thread") << 1;
    QTest::newRow("on both threads") << 2;
    QTest::newRow("on all four threads") << 4;
}

/// Every pool thread waits for work that only the pool can do.
void tst_concurrentHashing::completesOnPoolThreads()
{
    QFETCH(const int, threads);
    const PoolSize size(threads);
    QMutex mutex;
    QList<QList<FileHash>> results;
    runOnPoolThreads(threads, [&] {
        const QList<FileHash> hashes = computeHashesConcurrently(m_paths);
        const QMutexLocker lock(&mutex);
        results.append(hashes);
    });
    QCOMPARE(results.size(), threads);
    for (const QList<FileHash> &hashes : std::as_const(results)) {
        QCOMPARE(pathsOf(hashes), m_paths);
        QCOMPARE(digestsOf(hashes), m_digests);
    }
}

/// A release without a reservation, or the reverse, would change the size of the pool permanently.
void tst_concurrentHashing::restoresThePoolSize()
{
    const PoolSize size(2);
    QThreadPool *const pool = QThreadPool::globalInstance();
    const auto hashOften = [this] {
        for (int i = 0; i < 20; ++i)
            QCOMPARE(computeHashesConcurrently(m_paths.first(3)).size(), 3);
    };
    hashOften();
    runOnPoolThreads(1, hashOften);
    QVERIFY(pool->waitForDone());
    QCOMPARE(pool->activeThreadCount(), 0);
}

void tst_concurrentHashing::hashesNothingOnceAbandoned()
{
    const PoolSize size(2);
    std::atomic<int> asked{0};
    QFuture<QList<FileHash>> future = startComputingHashes(m_paths, [&asked] { return ++asked > 100; });
    const QList<FileHash> hashes = future.result();
    QCOMPARE(pathsOf(hashes), m_paths);
    // Files that wait for the disk may check again.
    QVERIFY2(
        asked >= m_paths.size() && asked <= m_paths.size() + 100, qPrintable(QString::number(asked.load())));
    const qsizetype left = digestsOf(hashes).count(QByteArray());
    QVERIFY2(left >= m_paths.size() - 100 && left < m_paths.size(), qPrintable(QString::number(left)));
    for (qsizetype i = 0; i < hashes.size(); ++i)
        QVERIFY(hashes.at(i).hash.isEmpty() || hashes.at(i).hash == m_digests.at(i));
}

void tst_concurrentHashing::doesNotWaitOnceAbandoned()
{
#ifndef Q_OS_LINUX
    QSKIP("Only Linux has files that are never cached");
#endif
    const PoolSize size(1);
    constexpr int openAtOnce = 16;
    int asked = 0;
    const QList<FileHash> hashes = startComputingHashes(QList<QString>(100, neverCached), [&asked] {
        return ++asked > openAtOnce;
    }).result();
    QCOMPARE(digestsOf(hashes), QList<QByteArray>(100));
}

QTEST_GUILESS_MAIN(tst_concurrentHashing)
#include "tst_concurrentHashing.moc"
