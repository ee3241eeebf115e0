#include "analysis/FileHash.h"
#include "tests/support/RandomBytes.h"
#include "tests/support/TestFiles.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using Qt::StringLiterals::operator""_s;

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

    void matchesPublishedTestVectors_data();
    void matchesPublishedTestVectors();
    void coversHeadAndTail_data();
    void coversHeadAndTail();
    void dependsOnlyOnSampledBytes_data();
    void dependsOnlyOnSampledBytes();
    void doesNotDependOnTheSize();
    void coversTheTailOfAVeryLargeFile();
    void doesNotModifyTheFile();

private:
    [[nodiscard]] QString path(const QString &name = u"file"_s) const;

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

void tst_fileHash::matchesPublishedTestVectors_data()
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

void tst_fileHash::matchesPublishedTestVectors()
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

void tst_fileHash::dependsOnlyOnSampledBytes_data()
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

void tst_fileHash::dependsOnlyOnSampledBytes()
{
    QFETCH(const int, size);
    QFETCH(const int, changedByte);
    QFETCH(const bool, changes);
    QByteArray content = randomBytes(size, 2);
    writeFile(path(u"before"_s), content);
    content[changedByte] = static_cast<char>(~content.at(changedByte));
    writeFile(path(u"after"_s), content);
    const bool differ = computeFileHash(path(u"before"_s), chunk) != computeFileHash(path(u"after"_s), chunk);
    QCOMPARE(differ, changes);
}

void tst_fileHash::doesNotDependOnTheSize()
{
    const QByteArray content = randomBytes(8192, 3);
    writeFile(path(u"short"_s), content.left(4096));
    writeFile(path(u"middle"_s), content.left(5000));
    writeFile(path(u"long"_s), content);
    const QByteArray hash = computeFileHash(path(u"short"_s), chunk);
    QCOMPARE(computeFileHash(path(u"middle"_s), chunk), hash);
    QCOMPARE(computeFileHash(path(u"long"_s), chunk), hash);
}

/// The size does not fit into 32 bits. The file is sparse and takes almost no disk space.
void tst_fileHash::coversTheTailOfAVeryLargeFile()
{
    constexpr qint64 size = 5'000'000'001;
    const QByteArray content = randomBytes(qsizetype(2) * chunk, 4);
    QFile file(path());
    QVERIFY(file.open(QIODevice::WriteOnly));
    if (!file.resize(size))
        QSKIP("Files cannot be this large here");
    QCOMPARE(file.write(content.first(chunk)), chunk);
    QVERIFY(file.seek(size - chunk));
    QCOMPARE(file.write(content.last(chunk)), chunk);
    file.close();
    QCOMPARE(computeFileHash(path(), chunk), sha256(content));
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
