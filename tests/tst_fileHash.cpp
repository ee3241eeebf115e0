#include "analysis/FileHash.h"
#include "tests/support/PoolThreads.h"
#include "tests/support/RandomBytes.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"
#include "tests/support/UnprivilegedUser.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

constexpr int chunk = 4096;

QByteArray sha256(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

/// The fingerprint of a file with this content, computed in memory.
QByteArray expectedHash(const QByteArray &content, int chunkSize)
{
    const QByteArray head = content.left(chunkSize);
    return sha256(content.size() > 2 * qsizetype(chunkSize) ? head + content.right(chunkSize) : head);
}

} // namespace

/// The fingerprint of one file.
class tst_fileHash : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void isPlainSha256_data();
    void isPlainSha256();
    void coversHeadAndTail_data();
    void coversHeadAndTail();
    void dependsOnSampledBytesOnly_data();
    void dependsOnSampledBytesOnly();
    void doesNotCoverTheSize();
    void coversTheTailOfAVeryLargeFile();
    void isEmptyForFilesThatCannotBeOpened_data();
    void isEmptyForFilesThatCannotBeOpened();
    void isEmptyForALockedFile();
    void isEmptyForPipesAndDevices_data();
    void isEmptyForPipesAndDevices();
    void coversFilesThatReportNoSize();
    void doesNotModifyTheFile();

private:
    [[nodiscard]] QString path(const QString &name = QStringLiteral("file")) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_fileHash::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

QString tst_fileHash::path(const QString &name) const
{
    return m_folder->filePath(name);
}

void tst_fileHash::isPlainSha256_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("chunkSize");
    QTest::addColumn<QByteArray>("hexDigest");

    // The test vectors that NIST publishes for SHA-256.
    QTest::newRow("no bits") << QByteArray() << chunk
                             << QByteArray(
                                    "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    QTest::newRow("24 bits") << QByteArray("abc") << chunk
                             << QByteArray(
                                    "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    QTest::newRow("448 bits") << QByteArray("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq")
                              << chunk
                              << QByteArray(
                                     "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    QTest::newRow("896 bits") << QByteArray("abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmn"
                                            "hijklmnoijklmnopjklmnopqklmnopqrlmnopqrsmnopqrstnopqrstu")
                              << chunk
                              << QByteArray(
                                     "cf5b16a778af8380036ce59e7b0492370b249b11e8f07a51afac45037afee9d1");
    QTest::newRow("a million letters")
        << QByteArray(1'000'000, 'a') << 1'000'000
        << QByteArray("cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

void tst_fileHash::isPlainSha256()
{
    QFETCH(const QByteArray, content);
    QFETCH(const int, chunkSize);
    writeFile(path(), content);
    QTEST(computeFileHash(path(), chunkSize).toHex(), "hexDigest");
}

void tst_fileHash::coversHeadAndTail_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("chunkSize");

    for (const int size : {0, 1, 4095, 4096, 4097, 6000, 8191, 8192, 8193, 12288, 20000, 1'000'000})
        QTest::addRow("%d bytes", size) << size << chunk;
    for (const int size : {0, 1, 2, 3, 4, 5})
        QTest::addRow("%d bytes in chunks of 2", size) << size << 2;
    for (const int size : {0, 1, 2, 3, 20000})
        QTest::addRow("%d bytes in chunks of 1", size) << size << 1;
    for (const int size : {20000, 40000, 40001, 60000})
        QTest::addRow("%d bytes in chunks of 20000", size) << size << 20000;
    QTest::addRow("10 bytes in chunks of 0") << 10 << 0;
}

void tst_fileHash::coversHeadAndTail()
{
    QFETCH(const int, size);
    QFETCH(const int, chunkSize);
    const QByteArray content = randomBytes(size, 1);
    writeFile(path(), content);
    const QByteArray hash = computeFileHash(path(), chunkSize);
    QCOMPARE(hash.toHex(), expectedHash(content, chunkSize).toHex());
    QCOMPARE(hash.size(), 32);
}

void tst_fileHash::dependsOnSampledBytesOnly_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("changedByte");
    QTest::addColumn<bool>("changes");

    const auto row = [](int size, int changedByte, bool changes) {
        QTest::addRow("byte %d of %d", changedByte, size) << size << changedByte << changes;
    };
    row(1, 0, true);
    row(4096, 4095, true);
    row(4097, 4095, true);
    row(4097, 4096, false);
    row(6000, 5999, false);
    row(8192, 4095, true);
    row(8192, 4096, false);
    row(8192, 8191, false);
    row(8193, 0, true);
    row(8193, 4095, true);
    row(8193, 4096, false);
    row(8193, 4097, true);
    row(8193, 8192, true);
    row(20000, 4095, true);
    row(20000, 4096, false);
    row(20000, 10000, false);
    row(20000, 15903, false);
    row(20000, 15904, true);
    row(20000, 19999, true);
}

void tst_fileHash::dependsOnSampledBytesOnly()
{
    QFETCH(const int, size);
    QFETCH(const int, changedByte);
    QFETCH(const bool, changes);
    QByteArray content = randomBytes(size, 2);
    writeFile(path(QStringLiteral("before")), content);
    content[changedByte] = static_cast<char>(~content.at(changedByte));
    writeFile(path(QStringLiteral("after")), content);
    const bool differ = computeFileHash(path(QStringLiteral("before")), chunk) !=
                        computeFileHash(path(QStringLiteral("after")), chunk);
    QCOMPARE(differ, changes);
}

void tst_fileHash::doesNotCoverTheSize()
{
    const QByteArray content = randomBytes(8192, 3);
    writeFile(path(QStringLiteral("short")), content.left(4096));
    writeFile(path(QStringLiteral("middle")), content.left(5000));
    writeFile(path(QStringLiteral("long")), content);
    const QByteArray hash = computeFileHash(path(QStringLiteral("short")), chunk);
    QCOMPARE(computeFileHash(path(QStringLiteral("middle")), chunk), hash);
    QCOMPARE(computeFileHash(path(QStringLiteral("long")), chunk), hash);
}

/// The size does not fit into 32 bits. The file is sparse and takes almost no disk space.
void tst_fileHash::coversTheTailOfAVeryLargeFile()
{
    constexpr qint64 size = 5'000'000'001;
    const QByteArray content = randomBytes(qsizetype(2) * chunk, 4);
    QFile file(path());
    QVERIFY(file.open(QIODevice::WriteOnly));
    if (!file.resize(size))
        QSKIP("There can be no file of 5 GB here");
    QCOMPARE(file.write(content.first(chunk)), chunk);
    QVERIFY(file.seek(size - chunk));
    QCOMPARE(file.write(content.last(chunk)), chunk);
    file.close();
    QCOMPARE(computeFileHash(path(), chunk), sha256(content));
}

void tst_fileHash::isEmptyForFilesThatCannotBeOpened_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing file") << QStringLiteral("missing");
    QTest::newRow("missing folder") << QStringLiteral("missing/file");
    QTest::newRow("file as folder") << QStringLiteral("file/file");
    QTest::newRow("folder") << QStringLiteral("folder");
    QTest::newRow("the folder itself") << QString();
}

void tst_fileHash::isEmptyForFilesThatCannotBeOpened()
{
    QFETCH(const QString, name);
    writeFile(path(), "content");
    writeFile(path(QStringLiteral("folder/file")), "content");
    QCOMPARE(computeFileHash(path(name), chunk), QByteArray());
    QCOMPARE(computeFileHash(QString(), chunk), QByteArray());
}

void tst_fileHash::isEmptyForALockedFile()
{
    writeFile(path(), "content");
    allowAccess(m_folder->path());
    denyAccess(path());
    bool keptOut = false;
    QByteArray hash;
    {
        const UnprivilegedUser user;
        keptOut = !QFile(path()).open(QIODevice::ReadOnly);
        hash = computeFileHash(path(), chunk);
    }
    if (!keptOut)
        QSKIP("Permissions keep nobody out here");
    QCOMPARE(hash, QByteArray());
}

void tst_fileHash::isEmptyForPipesAndDevices_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("pipe") << QStringLiteral("pipe");
    QTest::newRow("link to a pipe") << QStringLiteral("link");
    QTest::newRow("socket") << QStringLiteral("socket");
    QTest::newRow("endless device") << QStringLiteral("/dev/zero");
}

/// A plain open() of a pipe blocks until another process opens the other end. Here none does.
void tst_fileHash::isEmptyForPipesAndDevices()
{
    QFETCH(const QString, kind);
    if (!makePipe(path(QStringLiteral("pipe"))) || !makeSocket(path(QStringLiteral("socket"))) ||
        !makeLink(path(QStringLiteral("pipe")), path(QStringLiteral("link"))))
        QSKIP("There are no pipes and sockets in folders here");
    // filePath() returns an absolute path unchanged.
    const QString file = QDir(m_folder->path()).filePath(kind);
    QByteArray hash("not computed");
    runOnPoolThreads(1, [&] { hash = computeFileHash(file, chunk); });
    QCOMPARE(hash, QByteArray());
}

/// Files in /proc report a size of 0 but have contents.
void tst_fileHash::coversFilesThatReportNoSize()
{
    const QString version = QStringLiteral("/proc/version");
    QFile file(version);
    if (!file.open(QIODevice::ReadOnly) || file.size() > 0)
        QSKIP("There is no such file here");
    const QByteArray content = file.readAll();
    QVERIFY(!content.isEmpty());
    QCOMPARE(computeFileHash(version, chunk), sha256(content.left(chunk)));
}

void tst_fileHash::doesNotModifyTheFile()
{
    const QByteArray content = randomBytes(20000, 5);
    writeFile(path(), content);
    setModificationTime(path(), 1000);
    const QDateTime modified = QFileInfo(path()).lastModified();
    QVERIFY(!computeFileHash(path(), chunk).isEmpty());
    QCOMPARE(QFileInfo(path()).lastModified(), modified);
    QFile file(path());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), content);
}

QTEST_GUILESS_MAIN(tst_fileHash)
#include "tst_fileHash.moc"
