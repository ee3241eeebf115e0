#include "analysis/FingerprintQueue.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <atomic>

using Qt::StringLiterals::operator""_s;

namespace {

bool neverAbandoned()
{
    return false;
}

/// Size classes of two missing files each: the queue handles them without reading.
SizeClasses pairsOfMissingFiles(qsizetype pairs)
{
    SizeClasses classes;
    for (qsizetype first = 0; first < 2 * pairs; first += 2)
        classes.classes.push_back({.firstCandidate = first, .count = 2, .smallerFiles = first});
    for (qsizetype i = 0; i < 2 * pairs; ++i)
        classes.candidates.append(u"/missing/%1"_s.arg(i));
    return classes;
}

} // namespace

/// The queue yields fingerprints in the order of the files and computes a bounded number ahead.
class tst_fingerprintQueue : public QObject
{
    Q_OBJECT

private slots:
    void returnsOneFingerprintPerCandidateInOrder_data();
    void returnsOneFingerprintPerCandidateInOrder();
    void computesABoundedNumberAhead();
};

void tst_fingerprintQueue::returnsOneFingerprintPerCandidateInOrder_data()
{
    QTest::addColumn<int>("filesOfEachClass");
    for (const int files : {2, 63, 64, 65, 150})
        QTest::addRow("classes of %d", files) << files;
}

void tst_fingerprintQueue::returnsOneFingerprintPerCandidateInOrder()
{
    QFETCH(const int, filesOfEachClass);
    constexpr int files = 300;
    const QTemporaryDir folder;
    SizeClasses classes;
    for (int first = 0; first < files; first += filesOfEachClass) {
        const int count = std::min(filesOfEachClass, files - first);
        classes.classes.push_back({.firstCandidate = first, .count = count, .smallerFiles = first});
        for (int i = first; i < first + count; ++i) {
            classes.candidates.append(folder.filePath(QString::number(i)));
            writeFile(classes.candidates.last(), QByteArray::number(i));
        }
    }
    FingerprintQueue queue(classes, neverAbandoned);
    QStringList paths;
    for (const SizeClass &expected : classes.classes) {
        const std::optional<FingerprintedClass> next = queue.takeNext();
        QVERIFY(next);
        QCOMPARE(next->sizeClass.firstCandidate, expected.firstCandidate);
        QCOMPARE(std::ssize(next->hashes), expected.count);
        for (const FileHash &record : next->hashes) {
            QCOMPARE(record.hash, computeFileHash(record.filePath, 4096));
            paths.append(record.filePath);
        }
    }
    QVERIFY(!queue.takeNext());
    QCOMPARE(paths, classes.candidates);
}

/// A single job for all files would report no progress until the end.
void tst_fingerprintQueue::computesABoundedNumberAhead()
{
    constexpr qsizetype files = 10'000;
    // 16 jobs of 64 files.
    constexpr int maxAhead = 1024;
    const SizeClasses classes = pairsOfMissingFiles(files / 2);
    std::atomic<int> started = 0;
    FingerprintQueue queue(classes, [&started] {
        ++started;
        return false;
    });
    for (qsizetype taken = 2; taken <= files; taken += 2) {
        QVERIFY(queue.takeNext());
        QVERIFY2(started <= taken + maxAhead, qPrintable(QString::number(started - taken)));
    }
}

QTEST_GUILESS_MAIN(tst_fingerprintQueue)
#include "tst_fingerprintQueue.moc"
