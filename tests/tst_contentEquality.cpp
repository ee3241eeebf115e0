#include "analysis/ContentEquality.h"
#include "tests/support/RandomBytes.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr qsizetype blockSize = qsizetype(1024) * 1024;

bool never()
{
    return false;
}

} // namespace

/// The byte by byte comparison of two open files.
class tst_contentEquality : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void comparesEveryByte_data();
    void comparesEveryByte();
    void readsBeyondTheReportedSize();
    void comparesFromTheFilePositions();
    void endsAtTheFirstDifference();
    void endsWhenAbandoned();
    void reportsWhichFileIsUnreadable_data();
    void reportsWhichFileIsUnreadable();

private:
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_folder->filePath(name);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QFile m_first;
    QFile m_second;
};

void tst_contentEquality::init()
{
    m_first.close();
    m_second.close();
    m_folder = std::make_unique<QTemporaryDir>();
    m_first.setFileName(path(u"first"_s));
    m_second.setFileName(path(u"second"_s));
}

void tst_contentEquality::comparesEveryByte_data()
{
    QTest::addColumn<qsizetype>("size");
    QTest::addColumn<qsizetype>("difference");
    for (const qsizetype size : {qsizetype(0), qsizetype(1), qsizetype(5000), blockSize - 1, blockSize,
             blockSize + 1, 3 * blockSize}) {
        QTest::addRow("%lld equal", qlonglong(size)) << size << qsizetype(-1);
        QTest::addRow("%lld and one more", qlonglong(size)) << size << size;
        for (const qsizetype position : {qsizetype(0), size / 2, blockSize - 1, blockSize, size - 1}) {
            if (position >= 0 && position < size)
                QTest::addRow("%lld differ at %lld", qlonglong(size), qlonglong(position))
                    << size << position;
        }
    }
}

void tst_contentEquality::comparesEveryByte()
{
    QFETCH(const qsizetype, size);
    QFETCH(const qsizetype, difference);
    const QByteArray content = randomBytes(size, 1);
    QByteArray other = content;
    if (difference == size)
        other += '\0';
    else if (difference >= 0)
        other[difference] = static_cast<char>(other[difference] ^ 1);
    writeFile(m_first.fileName(), content);
    writeFile(m_second.fileName(), other);
    const auto expected = difference < 0 ? ContentEquality::Equal : ContentEquality::Different;
    for (int round = 0; round < 2; ++round) {
        QVERIFY(m_first.open(QFile::ReadOnly | QFile::Unbuffered));
        QVERIFY(m_second.open(QFile::ReadOnly | QFile::Unbuffered));
        QCOMPARE(compareContents(m_first, m_second, never), expected);
        // The second round swaps the files.
        m_first.close();
        m_second.close();
        m_first.setFileName(path(u"second"_s));
        m_second.setFileName(path(u"first"_s));
    }
}

/// A file may grow while it is compared, and kernel files report size 0.
void tst_contentEquality::readsBeyondTheReportedSize()
{
    writeFile(m_first.fileName(), "");
    writeFile(m_second.fileName(), "");
    QVERIFY(m_first.open(QFile::ReadOnly | QFile::Unbuffered));
    QVERIFY(m_second.open(QFile::ReadOnly | QFile::Unbuffered));
    int asked = 0;
    const auto growing = [&] {
        if (++asked == 1) {
            writeFile(m_first.fileName(), "grown here");
            writeFile(m_second.fileName(), "grown her.");
        }
        return false;
    };
    QCOMPARE(compareContents(m_first, m_second, growing), ContentEquality::Different);
}

void tst_contentEquality::comparesFromTheFilePositions()
{
    writeFile(m_first.fileName(), "12same");
    writeFile(m_second.fileName(), "3same");
    QVERIFY(m_first.open(QFile::ReadOnly | QFile::Unbuffered) && m_first.seek(2));
    QVERIFY(m_second.open(QFile::ReadOnly | QFile::Unbuffered) && m_second.seek(1));
    QCOMPARE(compareContents(m_first, m_second, never), ContentEquality::Equal);
}

void tst_contentEquality::endsAtTheFirstDifference()
{
    writeFile(m_first.fileName(), QByteArray(8 * blockSize, 'a'));
    writeFile(m_second.fileName(), QByteArray(blockSize, 'a') + QByteArray(7 * blockSize, 'b'));
    QVERIFY(m_first.open(QFile::ReadOnly | QFile::Unbuffered));
    QVERIFY(m_second.open(QFile::ReadOnly | QFile::Unbuffered));
    QCOMPARE(compareContents(m_first, m_second, never), ContentEquality::Different);
    QCOMPARE_LE(m_first.pos(), 2 * blockSize);
}

void tst_contentEquality::endsWhenAbandoned()
{
    writeFile(m_first.fileName(), QByteArray(8 * blockSize, 'a'));
    writeFile(m_second.fileName(), QByteArray(8 * blockSize, 'a'));
    QVERIFY(m_first.open(QFile::ReadOnly | QFile::Unbuffered));
    QVERIFY(m_second.open(QFile::ReadOnly | QFile::Unbuffered));
    int asked = 0;
    QCOMPARE(
        compareContents(m_first, m_second, [&asked] { return ++asked > 2; }), ContentEquality::Abandoned);
    QCOMPARE_LE(m_first.pos(), 2 * blockSize);
}

void tst_contentEquality::reportsWhichFileIsUnreadable_data()
{
    QTest::addColumn<bool>("first");
    QTest::newRow("first") << true;
    QTest::newRow("second") << false;
}

void tst_contentEquality::reportsWhichFileIsUnreadable()
{
#ifdef Q_OS_LINUX
    QFETCH(const bool, first);
    // This file opens, but reading it fails: no memory is mapped at its start.
    QFile unreadable(u"/proc/self/mem"_s);
    writeFile(m_first.fileName(), "content");
    QVERIFY(m_first.open(QFile::ReadOnly | QFile::Unbuffered));
    QVERIFY(unreadable.open(QFile::ReadOnly | QFile::Unbuffered));
    if (first)
        QCOMPARE(compareContents(unreadable, m_first, never), ContentEquality::FirstUnreadable);
    else
        QCOMPARE(compareContents(m_first, unreadable, never), ContentEquality::SecondUnreadable);
    QVERIFY(!unreadable.errorString().isEmpty());
#else
    QSKIP("This system has no file that opens but cannot be read");
#endif
}

QTEST_GUILESS_MAIN(tst_contentEquality)
#include "tst_contentEquality.moc"
