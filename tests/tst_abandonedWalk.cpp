#include "scan/FileCollection.h"
#include "scan/FileCount.h"
#include "tests/support/HostileTree.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>

/// A closing window waits for its walk, so the walk must check often whether it is abandoned.
class tst_abandonedWalk : public QObject
{
    Q_OBJECT

private slots:
    void checksForAbandonInEveryFolder();
    void collectsNoFolder();
    void stopsCollectingOnceAbandoned();
    void stopsCountingOnceAbandoned();
};

namespace {

constexpr int folderCount = 50;

ScanOptions everything()
{
    ScanOptions options;
    options.fileTypes.append(QStringLiteral("other"));
    return options;
}

} // namespace

void tst_abandonedWalk::checksForAbandonInEveryFolder()
{
    const QTemporaryDir root;
    for (int i = 0; i < folderCount; ++i)
        QVERIFY(QDir(root.path()).mkpath(QStringLiteral("%1/inside").arg(i)));
    std::atomic<int> asked = 0;
    const auto ask = [&asked] {
        ++asked;
        return false;
    };
    QCOMPARE(countFiles({root.path()}, ask), 0);
    QVERIFY2(asked >= 2 * folderCount, qPrintable(QString::number(asked.load())));
    const CollectionCallbacks callbacks{
        .counted = [&] { asked = 0; },
        .progress = [](const QString &, int) {},
        .abandoned = ask,
    };
    QVERIFY(collectFiles({root.path()}, everything(), callbacks).isEmpty());
    QVERIFY2(asked >= 2 * folderCount, qPrintable(QString::number(asked.load())));
}

void tst_abandonedWalk::collectsNoFolder()
{
    const QTemporaryDir root;
    writeFile(root.filePath(QStringLiteral("folder.txt/inside.txt")), "x");
    QVERIFY(QDir(root.path()).mkpath(QStringLiteral("empty.txt")));
    const CollectionCallbacks callbacks{
        .counted = [] {}, .progress = [](const QString &, int) {}, .abandoned = [] { return false; }};
    QCOMPARE(collectFiles({root.path()}, everything(), callbacks),
        QStringList{root.filePath(QStringLiteral("folder.txt/inside.txt"))});
    QCOMPARE(scannedFileCount.load(), 1);
}

void tst_abandonedWalk::stopsCollectingOnceAbandoned()
{
    const QTemporaryDir root;
    for (int i = 0; i < folderCount; ++i)
        writeFile(root.filePath(QStringLiteral("%1/file").arg(i)), "x");
    std::atomic<bool> counted = false;
    std::atomic<bool> abandoned = false;
    std::atomic<int> askedTooMuch = 0;
    const CollectionCallbacks callbacks{
        .counted = [&counted] { counted = true; },
        .progress = [](const QString &, int) {},
        .abandoned =
            [&] {
                if (abandoned)
                    ++askedTooMuch;
                else if (counted && acceptedFileCount == 10)
                    abandoned = true;
                return abandoned.load();
            },
    };
    QCOMPARE(collectFiles({root.path()}, everything(), callbacks).size(), 10);
    QVERIFY2(askedTooMuch <= 1, qPrintable(QString::number(askedTooMuch.load())));
}

void tst_abandonedWalk::stopsCountingOnceAbandoned()
{
    constexpr int questions = 10;
    const QTemporaryDir root;
    for (const QString &folder : {QStringLiteral("a"), QStringLiteral("b")}) {
        QVERIFY(QDir(root.path()).mkpath(folder));
        writeEmptyFiles(root.filePath(folder), 100, QStringLiteral("x"));
    }
    std::atomic<int> asked = 0;
    const qint32 files = countFiles({root.path()}, [&asked] { return ++asked > questions; });
    QVERIFY2(files <= questions, qPrintable(QString::number(files)));
}

QTEST_GUILESS_MAIN(tst_abandonedWalk)
#include "tst_abandonedWalk.moc"
