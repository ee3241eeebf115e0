#include "analysis/Sha256.h"

#include <QCryptographicHash>
#include <QRandomGenerator>
#include <QTest>
#include <QtConcurrentMap>

#ifdef QUILLORY_HAS_CNG
#include "analysis/CngSha256.h"
#endif

using Qt::StringLiterals::operator""_ba;

/// The digest that fingerprints use, whichever library computes it.
class tst_digest : public QObject
{
    Q_OBJECT

private slots:
    void matchesThePublishedDigests_data();
    void matchesThePublishedDigests();
    void doesNotDependOnWhereHeadEnds();
    void agreesWithQtOnRandomInputs();
    void isSafeOnManyThreads();
    void keepsEarlierDigests();
    void isComputedByWindows();
};

namespace {

constexpr int seed = 20240917;

QByteArray randomBytes(QRandomGenerator &random, qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = static_cast<char>(random.bounded(256));
    return bytes;
}

QByteArray byQt(const QByteArray &head, const QByteArray &tail)
{
    return QCryptographicHash::hash(head + tail, QCryptographicHash::Sha256);
}

} // namespace

/// Test vectors of FIPS 180-2 and of NIST's example and CAVP collections.
void tst_digest::matchesThePublishedDigests_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("digest");

    QTest::newRow("nothing") << ""_ba
                             << "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"_ba;
    QTest::newRow("24 bits") << "abc"_ba
                             << "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"_ba;
    QTest::newRow("448 bits, padding needs a second block")
        << "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"_ba
        << "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"_ba;
    QTest::newRow("896 bits")
        << "abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmnhijklmnoijklmnopjklmnopqklmnopqrlmnopqrs"
           "mnopqrstnopqrstu"_ba
        << "cf5b16a778af8380036ce59e7b0492370b249b11e8f07a51afac45037afee9d1"_ba;
    QTest::newRow("8 bits") << QByteArray::fromHex("bd")
                            << "68325720aabd7c82f30f554b313d0570c95accbb7dc4b5aae11204c08ffe732b"_ba;
    QTest::newRow("32 bits") << QByteArray::fromHex("c98c8e55")
                             << "7abc22c0ae5af26ce93dbb94433a0e0b2e119d014f8e7f65bd56c61ccccd9504"_ba;
    QTest::newRow("55 zero bytes, padding just fits")
        << QByteArray(55, '\0') << "02779466cdec163811d078815c633f21901413081449002f24aa3e80f0b88ef7"_ba;
    QTest::newRow("56 zero bytes") << QByteArray(56, '\0')
                                   << "d4817aa5497628e7c77e6b606107042bbba3130888c5f47a375e6179be789fbb"_ba;
    QTest::newRow("one block of zeros")
        << QByteArray(64, '\0') << "f5a5fd42d16a20302798ef6ed309979b43003d2320d9f0e8ea9831a92759fb4b"_ba;
    QTest::newRow("1000 zero bytes") << QByteArray(1000, '\0')
                                     << "541b3e9daa09b20bf85fa273e5cbd3e80185aa4ec298e765db87742b70138a53"_ba;
    QTest::newRow("1000 times A") << QByteArray(1000, 'A')
                                  << "c2e686823489ced2017f6059b8b239318b6364f6dcd835d0a519105a1eadd6e4"_ba;
    QTest::newRow("a million times a")
        << QByteArray(1'000'000, 'a')
        << "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"_ba;
}

void tst_digest::matchesThePublishedDigests()
{
    QFETCH(const QByteArray, input);
    QFETCH(const QByteArray, digest);

    QCOMPARE(sha256(input, {}).toHex(), digest);
    QCOMPARE(sha256({}, input).toHex(), digest);
    QCOMPARE(sha256(input, {}).size(), 32);
}

void tst_digest::doesNotDependOnWhereHeadEnds()
{
    QRandomGenerator random(seed);
    const QByteArray input = randomBytes(random, 300);
    const QByteArray whole = byQt(input, {});
    for (qsizetype head = 0; head <= input.size(); ++head)
        QCOMPARE(sha256(QByteArrayView(input).first(head), QByteArrayView(input).sliced(head)), whole);
}

void tst_digest::agreesWithQtOnRandomInputs()
{
    QRandomGenerator random(seed);
    for (int i = 0; i < 5000; ++i) {
        const QByteArray head = randomBytes(random, random.bounded(4097));
        const QByteArray tail = randomBytes(random, random.bounded(2) == 0 ? 0 : random.bounded(4097));
        QCOMPARE(sha256(head, tail), byQt(head, tail));
    }
}

/// The inputs are large and many enough that threads compute digests at the same time.
void tst_digest::isSafeOnManyThreads()
{
    constexpr qsizetype distinct = 100;
    constexpr qsizetype repeats = 200;
    QRandomGenerator random(seed);
    QList<QByteArray> inputs;
    for (qsizetype i = 0; i < distinct * repeats; ++i)
        inputs.append(i < distinct ? randomBytes(random, 4096) : inputs.at(i % distinct));
    QThreadPool pool;
    pool.setMaxThreadCount(8);
    const auto digests = QtConcurrent::blockingMapped<QList<QByteArray>>(
        &pool, inputs, [](const QByteArray &input) { return sha256(input, input); });

    for (qsizetype i = 0; i < distinct; ++i) {
        const QByteArray expected = byQt(inputs.at(i), inputs.at(i));
        for (qsizetype j = i; j < digests.size(); j += distinct)
            QCOMPARE(digests.at(j), expected);
    }
}

void tst_digest::keepsEarlierDigests()
{
    const QByteArray first = sha256("first", {});
    QVERIFY(sha256("second", {}) != first);
    QCOMPARE(first.toHex(), byQt("first", {}).toHex());
}

// A failure of Windows would go unnoticed otherwise: Qt's digest takes its place.
void tst_digest::isComputedByWindows()
{
#ifdef QUILLORY_HAS_CNG
    QRandomGenerator random(seed);
    for (const qsizetype size : {0, 1, 63, 64, 4096}) {
        const QByteArray head = randomBytes(random, size);
        const QByteArray tail = randomBytes(random, 4096 - size);
        QCOMPARE(sha256ByCng(head, tail), byQt(head, tail));
        QCOMPARE(sha256ByCng(head, {}), byQt(head, {}));
    }
#else
    QSKIP("Only Windows has CNG");
#endif
}

QTEST_GUILESS_MAIN(tst_digest)
#include "tst_digest.moc"
