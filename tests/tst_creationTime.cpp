#include "analysis/CreationTime.h"
#include "tests/support/TestFiles.h"

#include <QDateTime>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

/// The time that decides which copy is kept equals that of QFileInfo.
class tst_creationTime : public QObject
{
    Q_OBJECT

private slots:
    void isTheBirthTime();
    void isTheModificationTimeWithoutBirthTime();
    void followsLinks();
    void isUnknownForMissingFiles();
};

void tst_creationTime::isTheBirthTime()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("é – ü.txt"));
    writeFile(path, "content");
    setModificationTime(path, 0);
    const QFileInfo file(path);
    if (!file.birthTime().isValid())
        QSKIP("This file system keeps no birth times");
    QCOMPARE(creationTime(path), file.birthTime().toMSecsSinceEpoch());
    if (file.birthTime() == file.lastModified())
        QSKIP("This file system reports the modification time as birth time");
    QVERIFY(creationTime(path) > file.lastModified().toMSecsSinceEpoch());
}

void tst_creationTime::isTheModificationTimeWithoutBirthTime()
{
    // Kernel files have no birth time.
    const QString path = QStringLiteral("/proc/self/status");
    const QFileInfo file(path);
    if (!file.exists() || file.birthTime().isValid())
        QSKIP("This system has no file without birth time");
    const qint64 before = file.lastModified().toMSecsSinceEpoch();
    QCOMPARE(creationTime(path), before);
}

void tst_creationTime::followsLinks()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("file"));
    const QString link = folder.filePath(QStringLiteral("link.lnk"));
    writeFile(path, "content");
    // Longer than the resolution of the clock of the file system.
    QTest::qWait(30);
    QVERIFY(QFile::link(path, link));
    QCOMPARE(creationTime(link), creationTime(path));
}

void tst_creationTime::isUnknownForMissingFiles()
{
    const QTemporaryDir folder;
    QCOMPARE(creationTime(folder.filePath(QStringLiteral("missing"))), std::nullopt);
    QCOMPARE(creationTime(QString()), std::nullopt);
}

QTEST_GUILESS_MAIN(tst_creationTime)
#include "tst_creationTime.moc"
