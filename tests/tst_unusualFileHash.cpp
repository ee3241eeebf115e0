#include "analysis/FileHash.h"
#include "tests/support/PoolThreads.h"
#include "tests/support/SpecialFiles.h"
#include "tests/support/TestFiles.h"
#include "tests/support/UnprivilegedUser.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int chunk = 4096;

} // namespace

/// The fingerprints of unusual files: an empty array for those that cannot be read.
class tst_unusualFileHash : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void isEmptyForFilesThatCannotBeOpened_data();
    void isEmptyForFilesThatCannotBeOpened();
    void isEmptyForAnUnreadableFile();
    void isEmptyForPipesAndDevices_data();
    void isEmptyForPipesAndDevices();
    void coversFilesThatReportNoSize();

private:
    [[nodiscard]] QString path(const QString &name = u"file"_s) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_unusualFileHash::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

QString tst_unusualFileHash::path(const QString &name) const
{
    return m_folder->filePath(name);
}

void tst_unusualFileHash::isEmptyForFilesThatCannotBeOpened_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing file") << u"missing"_s;
    QTest::newRow("missing folder") << u"missing/file"_s;
    QTest::newRow("file as folder") << u"file/file"_s;
    QTest::newRow("folder") << u"folder"_s;
    QTest::newRow("the folder itself") << QString();
}

void tst_unusualFileHash::isEmptyForFilesThatCannotBeOpened()
{
    QFETCH(const QString, name);
    writeFile(path(), "content");
    writeFile(path(u"folder/file"_s), "content");
    QCOMPARE(computeFileHash(path(name), chunk), QByteArray());
    QCOMPARE(computeFileHash(QString(), chunk), QByteArray());
}

void tst_unusualFileHash::isEmptyForAnUnreadableFile()
{
    writeFile(path(), "content");
    allowAccess(m_folder->path());
    denyAccess(path());
    bool isDenied = false;
    QByteArray hash;
    {
        const UnprivilegedUser user;
        isDenied = !QFile(path()).open(QIODevice::ReadOnly);
        hash = computeFileHash(path(), chunk);
    }
    if (!isDenied)
        QSKIP("Permissions have no effect here");
    QCOMPARE(hash, QByteArray());
}

void tst_unusualFileHash::isEmptyForPipesAndDevices_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("pipe") << u"pipe"_s;
    QTest::newRow("link to a pipe") << u"link"_s;
    QTest::newRow("socket") << u"socket"_s;
    QTest::newRow("endless device") << u"/dev/zero"_s;
}

/// A plain open() of a pipe blocks until another process opens the other end. Here none does.
void tst_unusualFileHash::isEmptyForPipesAndDevices()
{
    QFETCH(const QString, kind);
    if (!makePipe(path(u"pipe"_s)) || !makeSocket(path(u"socket"_s)) ||
        !makeLink(path(u"pipe"_s), path(u"link"_s)))
        QSKIP("There are no pipes and sockets here");
    // filePath() returns an absolute path unchanged.
    const QString file = QDir(m_folder->path()).filePath(kind);
    QByteArray hash("not computed");
    runOnPoolThreads(1, [&] { hash = computeFileHash(file, chunk); });
    QCOMPARE(hash, QByteArray());
}

/// Files in /proc report a size of 0 but have contents.
void tst_unusualFileHash::coversFilesThatReportNoSize()
{
    const QString version = u"/proc/version"_s;
    QFile file(version);
    if (!file.open(QIODevice::ReadOnly) || file.size() > 0)
        QSKIP("There is no file of size 0 with contents here");
    const QByteArray content = file.readAll();
    QVERIFY(!content.isEmpty());
    QCOMPARE(computeFileHash(version, chunk),
        QCryptographicHash::hash(content.left(chunk), QCryptographicHash::Sha256));
}

QTEST_GUILESS_MAIN(tst_unusualFileHash)
#include "tst_unusualFileHash.moc"
