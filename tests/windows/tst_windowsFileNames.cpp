#include "tests/support/TestFiles.h"
#include "tests/support/WindowDriver.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

/// Names that a program of the narrow or of the short kind would lose: found, shown and deleted like others.
class tst_windowsFileNames : public QObject
{
    Q_OBJECT

private slots:
    void areFoundShownAndDeleted_data();
    void areFoundShownAndDeleted();
};

namespace {

/// A relative path of folders, longer than the 260 characters that old programs stop at.
QString deepFolders()
{
    return QStringList(8, QString(50, u'd')).join(u'/');
}

} // namespace

void tst_windowsFileNames::areFoundShownAndDeleted_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("path of 400 characters") << deepFolders() + QStringLiteral("/photo.jpg");
    QTest::newRow("name of 240 characters") << QString(236, u'n') + QStringLiteral(".txt");
    QTest::newRow("long and not Latin") << deepFolders() + QStringLiteral("/照片.jpg");
    QTest::newRow("Cyrillic") << QStringLiteral("отпуск/Фотография.jpg");
    QTest::newRow("Chinese") << QStringLiteral("照片/生日.jpg");
    QTest::newRow("Arabic, right to left") << QStringLiteral("صور/عيد ميلاد.jpg");
    QTest::newRow("Devanagari") << QStringLiteral("चित्र/जन्मदिन.jpg");
    QTest::newRow("beyond 16 bits") << QStringLiteral("\U0001F4C1/\U0001F382\U0001F389.jpg");
    QTest::newRow("combining accents") << QStringLiteral("e\u0301te\u0301.jpg");
    QTest::newRow("capital suffix") << QStringLiteral("PHOTO.JPG");
    QTest::newRow("placeholder") << QStringLiteral("100%1 %2.txt");
}

void tst_windowsFileNames::areFoundShownAndDeleted()
{
    QFETCH(const QString, name);
    const QTemporaryDir folder;
    const QString original = folder.filePath(QStringLiteral("original/") + name);
    const QString copy = folder.filePath(QStringLiteral("copy/") + name);
    writeFile(original, "twice");
    writeFile(copy, "twice");

    WindowDriver driver;
    driver.setFolders({folder.path()});
    QVERIFY(driver.scan());
    const QStringList shown = driver.filePaths();
    QCOMPARE((QSet<QString>{shown.cbegin(), shown.cend()}), (QSet<QString>{original, copy}));
    const QStringList ticked = driver.tickedPaths();
    QCOMPARE(ticked.size(), 1);

    driver.clickAndCloseBoxes("btnRemoveSelected");
    QVERIFY(!QFile::exists(ticked.constFirst()));
    QCOMPARE(QFile::exists(original) + QFile::exists(copy), 1);
}

QTEST_MAIN(tst_windowsFileNames)
#include "tst_windowsFileNames.moc"
