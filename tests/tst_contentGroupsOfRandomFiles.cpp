#include "analysis/ContentGroups.h"
#include "tests/support/ContentOracle.h"
#include "tests/support/RandomBytes.h"

#include <QMutex>
#include <QMutexLocker>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <array>
#include <limits>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

namespace {

/// Limits the number of open files of the process during its lifetime.
class FewOpenFiles
{
public:
#ifdef Q_OS_UNIX
    explicit FewOpenFiles(int files)
    {
        getrlimit(RLIMIT_NOFILE, &m_before);
        const rlimit lowered{std::min(static_cast<rlim_t>(files), m_before.rlim_cur), m_before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &lowered);
    }

    ~FewOpenFiles()
    {
        setrlimit(RLIMIT_NOFILE, &m_before);
    }

    Q_DISABLE_COPY_MOVE(FewOpenFiles)

private:
    rlimit m_before = {};
#else
    explicit FewOpenFiles(int /*files*/) {}
#endif
};

/// Contents of a few sizes: many are equal, others differ in one or two bytes.
QList<QByteArray> randomContents(quint32 seed)
{
    constexpr std::array sizes{1, 5, 4096, 16'384, 16'385, 20'000, 147'456, 300'000};
    QRandomGenerator random(seed);
    QList<QByteArray> contents;
    for (int i = 0; i < 300; ++i) {
        const int size = sizes.at(random.bounded(static_cast<quint32>(sizes.size())));
        QByteArray content = randomBytes(size, random.bounded(2U));
        for (quint32 change = random.bounded(3U); change > 0; --change)
            content[random.bounded(size)] = static_cast<char>(random.bounded(4));
        contents.append(random.bounded(3) == 0 && i > 0 ? contents[random.bounded(i)] : content);
    }
    return contents;
}

/// Extreme values of the calls of a progress callback.
struct Progress
{
    qint64 highestDone = 0;
    qint64 lowestTotal = std::numeric_limits<qint64>::max();
    qint64 highestTotal = 0;
};

/// The bytes of all files that share their size with another file.
qint64 bytesToCompare(const QList<QByteArray> &contents)
{
    qint64 bytes = 0;
    for (const QByteArray &content : contents) {
        const auto sharesSize = [&content](
                                    const QByteArray &other) { return other.size() == content.size(); };
        bytes += std::ranges::count_if(contents, sharesSize) > 1 ? content.size() : 0;
    }
    return bytes;
}

} // namespace

/// The groups of random contents equal those of a comparison in memory.
class tst_contentGroupsOfRandomFiles : public QObject
{
    Q_OBJECT

private slots:
    void matchesAComparisonInMemory_data();
    void matchesAComparisonInMemory();
};

void tst_contentGroupsOfRandomFiles::matchesAComparisonInMemory_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("threads");
    QTest::addColumn<int>("openFiles");
    for (quint32 seed = 1; seed <= 3; ++seed) {
        QTest::addRow("seed %u, 1 thread", seed) << seed << 1 << 1024;
        QTest::addRow("seed %u, 2 threads", seed) << seed << 2 << 1024;
        QTest::addRow("seed %u, 8 threads", seed) << seed << 8 << 1024;
        QTest::addRow("seed %u, few open files", seed) << seed << 2 << 32;
    }
}

void tst_contentGroupsOfRandomFiles::matchesAComparisonInMemory()
{
    QFETCH(const quint32, seed);
    QFETCH(const int, threads);
    QFETCH(const int, openFiles);
    const QTemporaryDir folder;
    const QList<QByteArray> contents = randomContents(seed);
    const std::vector<SurveyedFile> files = writeFiles(folder.path(), contents);

    const FewOpenFiles limit(openFiles);
    QMutex mutex;
    Progress progress;
    const ComparisonCallbacks callbacks{
        .progress =
            [&](qint64 done, qint64 total) {
                const QMutexLocker lock(&mutex);
                progress.highestDone = std::max(progress.highestDone, done);
                progress.lowestTotal = std::min(progress.lowestTotal, total);
                progress.highestTotal = std::max(progress.highestTotal, total);
            },
        .abandoned = [] { return false; },
    };

    const ContentGroups result = groupByContent(files, ContentComparison::Bytes, threads, callbacks);

    QCOMPARE(result.groups, groupsOfEqual(contents));
    QVERIFY(result.unreadable.isEmpty());
    QCOMPARE(progress.highestDone, bytesToCompare(contents));
    QCOMPARE(progress.lowestTotal, bytesToCompare(contents));
    QCOMPARE(progress.highestTotal, bytesToCompare(contents));
}

QTEST_GUILESS_MAIN(tst_contentGroupsOfRandomFiles)
#include "tst_contentGroupsOfRandomFiles.moc"
