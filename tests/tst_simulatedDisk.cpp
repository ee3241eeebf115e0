#include "analysis/CreationTime.h"
#include "analysis/DuplicateGroup.h"
#include "analysis/FileHash.h"
#include "analysis/RegularFile.h"
#include "scan/FileCount.h"
#include "scan/FolderEntries.h"
#include "tests/support/CollectedFiles.h"
#include "tests/support/RandomBytes.h"
#include "tests/support/SimulatedDisk.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>

using Qt::StringLiterals::operator""_s;

/// Unusual file systems: names longer than 255 bytes, entries without a type, files without a birth time.
class tst_simulatedDisk : public QObject
{
    Q_OBJECT

private slots:
    void keepsNamesOfUpTo765Bytes();
    void readsEntriesOfUnknownType();
    void reportsAFolderThatFailsWhileItIsRead();
    void acceptsModificationTimeZero();
    void treatsBirthTimeZeroAsUnknown();
    void keepsAFileOf1970RatherThanAMissingOne();
    void continuesAfterAShortRead_data();
    void continuesAfterAShortRead();
    void prefetchesBothEnds_data();
    void prefetchesBothEnds();
    void waitsForALeasedFile();
    void neverWaitsForAPipeThatReplacedALeasedFile();

private:
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_folder.filePath(name);
    }

    const QTemporaryDir m_folder;
};

void tst_simulatedDisk::keepsNamesOfUpTo765Bytes()
{
    const QString folder = path(QString::fromLatin1(SimulatedDisk::longNames));
    QVERIFY(QDir().mkpath(folder));
    QList<QByteArray> expected;
    for (const QByteArray &name : SimulatedDisk::longFileNames())
        expected.append(QFile::encodeName(folder) + '/' + name);

    QList<QByteArray> collected;
    for (const QString &file : collect({folder}))
        collected.append(QFile::encodeName(file));
    QCOMPARE(collected, expected);
    QCOMPARE(countFiles({folder}, [] { return false; }), expected.size());

    FolderEntries entries(folder);
    for (const QByteArray &name : SimulatedDisk::longFileNames()) {
        QVERIFY(entries.next());
        QCOMPARE(QByteArray(entries.rawName()), name);
    }
    QCOMPARE(entries.undecodableNames(), 0);
    // Under another name its real entries are listed, so the temporary folder can be removed.
    QVERIFY(QDir().rename(folder, path(u"renamed folder"_s)));
}

void tst_simulatedDisk::readsEntriesOfUnknownType()
{
    const QString folder = path(QString::fromLatin1(SimulatedDisk::unknownTypes));
    writeFile(folder + u"/file"_s, "x");
    writeFile(folder + u"/sub/file"_s, "x");
    writeFile(path(u"elsewhere/file"_s), "x");
    QVERIFY(makeLink(u"file"_s, folder + u"/link to a file"_s));
    QVERIFY(makeLink(u"../elsewhere"_s, folder + u"/link to a folder"_s));
    QVERIFY(makeLink(u"missing"_s, folder + u"/link to nothing"_s));
    QVERIFY(makePipe(folder + u"/pipe"_s));

    const QStringList expected{folder + u"/file"_s, folder + u"/sub/file"_s};
    QCOMPARE(sorted(collect({folder})), expected);
    QCOMPARE(countFiles({folder}, [] { return false; }), 2);
}

void tst_simulatedDisk::reportsAFolderThatFailsWhileItIsRead()
{
    const QString folder = path(QString::fromLatin1(SimulatedDisk::failsAfterTwoEntries));
    for (const char name : {'1', '2', '3', '4'})
        writeFile(folder + u'/' + QLatin1Char(name), "x");
    FolderEntries entries(folder);
    while (entries.next())
        QCOMPARE(entries.error(), QString());
    QCOMPARE(entries.error(), qt_error_string(EIO));
    QVERIFY(QDir().rename(folder, path(u"renamed broken folder"_s)));
}

void tst_simulatedDisk::acceptsModificationTimeZero()
{
    const QString file = path(QString::fromLatin1(SimulatedDisk::withoutBirthTime));
    writeFile(file, "x");
    setModificationTime(file, 1);
    QCOMPARE(creationTime(file), QDateTime({2020, 1, 1}, {0, 0, 1}, Qt::UTC).toMSecsSinceEpoch());
    setModificationTime(
        file, QDateTime({2020, 1, 1}, {0, 0}, Qt::UTC).secsTo(QDateTime::fromSecsSinceEpoch(0)));
    QCOMPARE(creationTime(file), 0);
}

/// QFileInfo does the same.
void tst_simulatedDisk::treatsBirthTimeZeroAsUnknown()
{
    const QString file = path(QString::fromLatin1(SimulatedDisk::bornAtZero));
    writeFile(file, "x");
    setModificationTime(file, 1);
    QCOMPARE(creationTime(file), QDateTime({2020, 1, 1}, {0, 0, 1}, Qt::UTC).toMSecsSinceEpoch());
}

void tst_simulatedDisk::keepsAFileOf1970RatherThanAMissingOne()
{
    const QString file = path(u"1970/"_s + QString::fromLatin1(SimulatedDisk::withoutBirthTime));
    const QString later = path(u"later"_s);
    const QString gone = path(u"gone"_s);
    writeFile(file, "x");
    writeFile(later, "x");
    setModificationTime(
        file, QDateTime({2020, 1, 1}, {0, 0}, Qt::UTC).secsTo(QDateTime::fromSecsSinceEpoch(0)));
    QCOMPARE(indexOfKeptCopy({gone, file}), 1);
    QCOMPARE(indexOfKeptCopy({gone, later, file}), 2);
    QCOMPARE(indexOfKeptCopy({file, later, gone}), 0);
}

void tst_simulatedDisk::continuesAfterAShortRead_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {999, 1000, 1001, 4095, 4096, 4097, 8193})
        QTest::addRow("%d bytes", size) << size;
}

void tst_simulatedDisk::continuesAfterAShortRead()
{
    QFETCH(const int, size);
    const QString path = this->path(QString::fromLatin1(SimulatedDisk::shortReads));
    const QByteArray content = randomBytes(size, 1);
    writeFile(path, content);

    RegularFile file(path);
    QByteArray read(4096, '\0');
    const std::optional<qint64> count = file.readIfCached(0, read.data(), read.size());
    if (!count)
        QSKIP("The page cache cannot be read alone here");

    QCOMPARE(*count, std::min<qint64>(size, 4096));
    QCOMPARE(read.first(*count), content.first(*count));
    const QByteArray tail = size > 8192 ? content.last(4096) : QByteArray();
    QCOMPARE(computeHashesConcurrently({path}).constFirst().hash,
        QCryptographicHash::hash(content.first(*count) + tail, QCryptographicHash::Sha256));
}

void tst_simulatedDisk::prefetchesBothEnds_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("hasTail");
    QTest::newRow("small") << 100 << false;
    QTest::newRow("two samples") << 8192 << false;
    QTest::newRow("more than two samples") << 8193 << true;
    QTest::newRow("large") << 1'000'000 << true;
}

void tst_simulatedDisk::prefetchesBothEnds()
{
    QFETCH(const int, size);
    QFETCH(const bool, hasTail);
    const QString path = this->path(u"file"_s);
    writeFile(path, QByteArray(size, 'x'));

    const RegularFile file(path);
    static_cast<void>(SimulatedDisk::takePrefetched());

    QVERIFY(file.prefetchEnds(4096));
    QList<SimulatedDisk::Range> expected{{0, 4096}};
    if (hasTail)
        expected.append({size - 4096, 4096});
    QVERIFY(SimulatedDisk::takePrefetched() == expected);
}

void tst_simulatedDisk::waitsForALeasedFile()
{
    const QString path = this->path(u"lease/"_s + QString::fromLatin1(SimulatedDisk::leased));
    writeFile(path, "content");
    QCOMPARE(computeFileHash(path, 4096), QCryptographicHash::hash("content", QCryptographicHash::Sha256));
}

void tst_simulatedDisk::neverWaitsForAPipeThatReplacedALeasedFile()
{
    const QString path = this->path(u"pipe/"_s + QString::fromLatin1(SimulatedDisk::leased));
    QVERIFY(QDir().mkpath(this->path(u"pipe"_s)));
    QVERIFY(makePipe(path));
    bool isOpen = true;
    const std::unique_ptr<QThread> opening(QThread::create([&] { isOpen = RegularFile(path).isOpen(); }));
    opening->start();
    const bool hasReturned = opening->wait(10'000);
    // Opening the other end releases the thread.
    QFile writer(path);
    if (!hasReturned)
        QVERIFY(writer.open(QIODevice::ReadWrite));
    QVERIFY(opening->wait());
    QVERIFY(hasReturned);
    QVERIFY(!isOpen);
}

QTEST_GUILESS_MAIN(tst_simulatedDisk)
#include "tst_simulatedDisk.moc"
