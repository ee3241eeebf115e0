#include "analysis/ContentGroups.h"
#include "tests/support/ContentOracle.h"
#include "tests/support/HostileTree.h"
#include "tests/support/PageCache.h"
#include "tests/support/RandomBytes.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <memory>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr qint64 kib = 1024;
constexpr qint64 mib = 1024 * kib;
// The boundaries between the parts that are read and compared separately.
constexpr qint64 headSize = 16 * kib;
constexpr qint64 rangeSize = 32 * mib;
constexpr qint64 largeSize = 70 * mib;

/// \a content with the byte at \a position changed.
QByteArray changedAt(QByteArray content, qsizetype position)
{
    content[position] = static_cast<char>(content[position] ^ 1);
    return content;
}

/// Changes one byte of a file.
bool changeFile(const QString &path, qint64 position)
{
    QFile file(path);
    return file.open(QIODevice::ReadWrite) && file.seek(position) && file.putChar('!');
}

} // namespace

/// Groups of files with equal contents.
class tst_contentGroups : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void comparesEveryByte_data();
    void comparesEveryByte();
    void comparesFilesThatAreNotCached();
    void comparesLargeFilesInAllTheirRanges_data();
    void comparesLargeFilesInAllTheirRanges();
    void splitsAGroupWhereItsMembersDiffer();
    void comparesFilesOfEqualSizeOnly();
    void groupsEmptyFilesWithoutOpeningThem();
    void groupsManyFilesWithFewContents_data();
    void groupsManyFilesWithFewContents();
    void groupsManyFilesThatDifferLate();
    void groupsMoreHeadsThanOneTaskHashes();
    void groupsBySamplesOnRequest();

private:
    [[nodiscard]] QString path(const QString &name) const;
    /// Writes three equal sparse files.
    [[nodiscard]] std::vector<SurveyedFile> writeLargeFiles() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_contentGroups::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

QString tst_contentGroups::path(const QString &name) const
{
    return m_folder->filePath(name);
}

std::vector<SurveyedFile> tst_contentGroups::writeLargeFiles() const
{
    std::vector<SurveyedFile> files;
    for (const QString &name : {u"a"_s, u"b"_s, u"c"_s}) {
        if (writeSparseFile(path(name), largeSize, "end"))
            files.push_back({.path = path(name), .size = largeSize});
    }
    return files;
}

void tst_contentGroups::comparesEveryByte_data()
{
    QTest::addColumn<qsizetype>("size");
    QTest::addColumn<qsizetype>("position");

    for (const qsizetype size :
        {1LL, 4095LL, 4096LL, 4097LL, 8192LL, 16 * kib - 1, 16 * kib, 16 * kib + 1, 64 * kib - 1, 64 * kib,
            64 * kib + 1, 144 * kib - 1, 144 * kib, 144 * kib + 1, mib - 1, mib, mib + 1}) {
        for (const qsizetype position :
            {0LL, 4095LL, 4096LL, 16 * kib - 1, 16 * kib, size / 2, 144 * kib - 1, 144 * kib, size - 1}) {
            if (position < size)
                QTest::addRow("byte %lld of %lld", position, size) << size << position;
        }
    }
}

void tst_contentGroups::comparesEveryByte()
{
    QFETCH(const qsizetype, size);
    QFETCH(const qsizetype, position);
    const QByteArray content = randomBytes(size, 1);
    const auto files = writeFiles(m_folder->path(), {content, changedAt(content, position), content});

    const ContentGroups result = groupQuietly(files);

    QCOMPARE(result.groups, (Groups{{0, 2}}));
    QVERIFY(result.unreadable.isEmpty());
}

void tst_contentGroups::comparesFilesThatAreNotCached()
{
    const QByteArray content = randomBytes(3 * mib, 1);
    const auto files = writeFiles(m_folder->path(),
        {content, changedAt(content, 100 * kib), content, changedAt(content, 3 * mib - 1), content});
    bool areUncached = false;
    // Called after the heads were read, because reading them fills the cache.
    const auto dropFiles = [&](qint64, qint64) {
        areUncached = areUncached || std::ranges::all_of(files, dropFromPageCache, &SurveyedFile::path);
    };

    const ContentGroups result = groupByContent(
        files, ContentComparison::Bytes, 1, {.progress = dropFiles, .abandoned = [] { return false; }});

    QCOMPARE(result.groups, (Groups{{0, 2, 4}}));
    if (!areUncached)
        QSKIP("This file system keeps its files cached");
}

void tst_contentGroups::comparesLargeFilesInAllTheirRanges_data()
{
    QTest::addColumn<qint64>("position");

    QTest::newRow("first byte after the head") << headSize;
    QTest::newRow("last byte of the first range") << headSize + rangeSize - 1;
    QTest::newRow("first byte of the second range") << headSize + rangeSize;
    QTest::newRow("last byte of the second range") << headSize + 2 * rangeSize - 1;
    QTest::newRow("last byte") << largeSize - 1;
}

void tst_contentGroups::comparesLargeFilesInAllTheirRanges()
{
    QFETCH(const qint64, position);
    const auto files = writeLargeFiles();
    QVERIFY(changeFile(files[1].path, position));

    QCOMPARE(groupQuietly(files).groups, (Groups{{0, 2}}));
}

void tst_contentGroups::splitsAGroupWhereItsMembersDiffer()
{
    const QByteArray content = randomBytes(400 * kib, 1);
    const QByteArray early = changedAt(content, 20 * kib);
    const QList<QByteArray> contents{content, changedAt(content, 300 * kib), early,
        changedAt(early, 300 * kib), changedAt(early, 300 * kib), early, content, changedAt(content, 0)};

    QCOMPARE(groupQuietly(writeFiles(m_folder->path(), contents)).groups, groupsOfEqual(contents));
}

void tst_contentGroups::comparesFilesOfEqualSizeOnly()
{
    const QList<QByteArray> contents{QByteArray(5000, 'a'), QByteArray(5001, 'a'), QByteArray(5002, 'a')};

    QVERIFY(groupQuietly(writeFiles(m_folder->path(), contents)).groups.empty());
}

void tst_contentGroups::groupsEmptyFilesWithoutOpeningThem()
{
    const std::vector<SurveyedFile> files{{.path = path(u"nowhere"_s)}, {.path = path(u"not here"_s)}};

    const ContentGroups result = groupQuietly(files);

    QCOMPARE(result.groups, (Groups{{0, 1}}));
    QVERIFY(result.unreadable.isEmpty());
}

void tst_contentGroups::groupsManyFilesWithFewContents_data()
{
    QTest::addColumn<qsizetype>("size");
    QTest::newRow("within a head") << qsizetype(300);
    QTest::newRow("beyond a head") << qsizetype(20'000);
}

/// More files than a task holds open.
void tst_contentGroups::groupsManyFilesWithFewContents()
{
    QFETCH(const qsizetype, size);
    const QByteArray content = randomBytes(size, 1);
    QList<QByteArray> contents;
    for (int i = 0; i < 200; ++i)
        contents.append(i % 3 == 0 ? content : changedAt(content, i % 3 == 1 ? 0 : size - 1));
    const auto files = writeFiles(m_folder->path(), contents);

    for (const int threads : {1, 2, 8, 1000})
        QCOMPARE(groupQuietly(files, threads).groups, groupsOfEqual(contents));
}

/// Comparing every pair of files would take too long: a hash must separate them.
void tst_contentGroups::groupsManyFilesThatDifferLate()
{
    const QByteArray content(30'000, 'x');
    QList<QByteArray> contents;
    for (int i = 0; i < 300; ++i) {
        QByteArray number = QByteArray::number(i / 2);
        contents.append(content + number.rightJustified(5, '0'));
    }
    std::rotate(contents.begin(), contents.begin() + 1, contents.end());

    QCOMPARE(groupQuietly(writeFiles(m_folder->path(), contents), 8).groups, groupsOfEqual(contents));
}

void tst_contentGroups::groupsMoreHeadsThanOneTaskHashes()
{
    QList<QByteArray> contents;
    for (quint32 i = 0; i < 700; ++i)
        contents.append(randomBytes(16 * kib + 1, i % 3 == 0 ? 0 : i / 2));
    // These have the head of the first file and differ from it in the byte after the head.
    for (quint32 i = 0; i < 20; ++i)
        contents.append(changedAt(contents.first(), 16 * kib));

    QCOMPARE(groupQuietly(writeFiles(m_folder->path(), contents)).groups, groupsOfEqual(contents));
}

void tst_contentGroups::groupsBySamplesOnRequest()
{
    const QByteArray content = randomBytes(30'000, 1);
    const QByteArray samples(4096, 'x');
    auto files = writeFiles(m_folder->path(),
        {content, changedAt(content, 15'000), changedAt(content, 0), changedAt(content, 29'999),
            // Equal fingerprints but different sizes.
            samples + 'y', samples + "yy"});
    files.push_back({.path = path(u"nowhere"_s), .size = 30'000});

    for (const int threads : {1, 2}) {
        const ContentGroups result = groupQuietly(files, threads, ContentComparison::Sample);

        QCOMPARE(result.groups, (Groups{{0, 1}}));
        QCOMPARE(pathsOf(result.unreadable), QStringList{path(u"nowhere"_s)});
        QVERIFY(!result.unreadable.first().reason.isEmpty());
    }
}

QTEST_GUILESS_MAIN(tst_contentGroups)
#include "tst_contentGroups.moc"
