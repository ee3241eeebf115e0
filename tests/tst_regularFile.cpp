#include "analysis/RegularFile.h"
#include "tests/support/LeaseHolder.h"
#include "tests/support/PageCache.h"
#include "tests/support/RandomBytes.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <array>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#endif

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int wanted = 4096;

using Buffer = std::array<char, wanted>;

#ifdef Q_OS_LINUX
/// The flags of the descriptor with which this process has \a path open; nothing if there is none.
std::optional<int> flagsOfOpenFile(const QString &path)
{
    const QDir descriptors(u"/proc/self/fd"_s);
    for (const QString &number :
        descriptors.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
        if (QFile::symLinkTarget(descriptors.filePath(number)) != path)
            continue;
        QFile info(u"/proc/self/fdinfo/"_s + number);
        if (!info.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray &line : info.readAll().split('\n')) {
            if (line.startsWith("flags:"))
                return line.mid(6).trimmed().toInt(nullptr, 8);
        }
    }
    return std::nullopt;
}
#endif

} // namespace

/// Reads pieces of a file to fingerprint.
class tst_regularFile : public QObject
{
    Q_OBJECT

private slots:
    void readsAtAnyPosition_data();
    void readsAtAnyPosition();
    void returnsNothingForDataThatIsNotCached();
    void waitsForTheLeaseOfAnotherProcess();
    void clearsTheNonBlockingFlag();
};

void tst_regularFile::readsAtAnyPosition_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("position");
    QTest::addColumn<bool>("atOnce");
    for (const int size : {0, 1, 4095, 4096, 4097, 20'000}) {
        for (const int position : {0, 1, 4096, 15'904, 30'000}) {
            QTest::addRow("%d bytes from %d", size, position) << size << position << false;
            QTest::addRow("%d bytes from %d, at once", size, position) << size << position << true;
        }
    }
}

void tst_regularFile::readsAtAnyPosition()
{
    QFETCH(const int, size);
    QFETCH(const int, position);
    QFETCH(const bool, atOnce);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"file"_s);
    const QByteArray content = randomBytes(size, 1);
    // The page cache has what was just written.
    writeFile(path, content);

    RegularFile file(path);
    QVERIFY(file.isOpen());
    QCOMPARE(file.size(), size);
    Buffer buffer = {};
    const std::optional<qint64> read = atOnce ? file.readIfCached(position, buffer.data(), wanted)
                                              : file.readAt(position, buffer.data(), wanted);
    if (!read)
        QSKIP("The page cache cannot be read alone here");
    const QByteArray expected = content.mid(position, wanted);
    QCOMPARE(*read, expected.size());
    QCOMPARE(QByteArray(buffer.data(), expected.size()), expected);
    QCOMPARE(file.size(), size);
}

void tst_regularFile::returnsNothingForDataThatIsNotCached()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"file"_s);
    const QByteArray content = randomBytes(20'000, 1);
    writeFile(path, content);
    if (!dropFromPageCache(path))
        QSKIP("Files cannot be dropped from the page cache here");

    RegularFile file(path);
    Buffer buffer = {};
    QCOMPARE(file.readIfCached(0, buffer.data(), wanted), std::nullopt);
    QVERIFY(file.prefetchEnds(wanted));
    QCOMPARE(file.readAt(0, buffer.data(), wanted), wanted);
    QCOMPARE(QByteArray(buffer.data(), wanted), content.first(wanted));
}

void tst_regularFile::waitsForTheLeaseOfAnotherProcess()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"file"_s);
    writeFile(path, "before");
    const LeaseHolder holder(path, "behind");
    if (!holder.holdsLease())
        QSKIP("There are no leases here");

    RegularFile file(path);
    QVERIFY(file.isOpen());
    Buffer buffer = {};
    const qint64 read = file.readAt(0, buffer.data(), wanted);
    // Written by the other process while this one waited.
    QCOMPARE(QByteArray(buffer.data(), read), "behind");
}

void tst_regularFile::clearsTheNonBlockingFlag()
{
#ifdef Q_OS_LINUX
    const QTemporaryDir folder;
    const QString path = QDir(folder.path()).canonicalPath() + u"/file"_s;
    writeFile(path, "content");

    const RegularFile file(path);
    const std::optional<int> flags = flagsOfOpenFile(path);

    QVERIFY(flags.has_value());
    QCOMPARE(*flags & (O_NONBLOCK | O_ACCMODE), O_RDONLY);
#else
    QSKIP("The flags of open files cannot be read here");
#endif
}

QTEST_GUILESS_MAIN(tst_regularFile)
#include "tst_regularFile.moc"
