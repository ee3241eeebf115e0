#include "tests/support/CollectedFiles.h"
#include "tests/support/TestFiles.h"
#include "tests/support/WindowDriver.h"
#include "tests/windows/WindowsFiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

/// Long names and names outside Latin-1 are found, shown and deleted like others.
class tst_windowsFileNames : public QObject
{
    Q_OBJECT

private slots:
    void findsShowsAndDeletesFiles_data();
    void findsShowsAndDeletesFiles();
    void skipsNamesThatLeadToAnotherFile_data();
    void skipsNamesThatLeadToAnotherFile();
};

namespace {

/// A relative path of folders longer than 260 characters, the limit of the old Windows functions.
QString deepFolders()
{
    return QStringList(8, QString(50, u'd')).join(u'/');
}

} // namespace

void tst_windowsFileNames::findsShowsAndDeletesFiles_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("path of 400 characters") << deepFolders() + QStringLiteral("/photo.jpg");
    QTest::newRow("name of 240 characters") << QString(236, u'n') + QStringLiteral(".txt");
    QTest::newRow("long and Chinese") << deepFolders() + QStringLiteral("/照片.jpg");
    QTest::newRow("Cyrillic") << QStringLiteral("отпуск/Фотография.jpg");
    QTest::newRow("Chinese") << QStringLiteral("照片/生日.jpg");
    QTest::newRow("Arabic, right to left") << QStringLiteral("صور/عيد ميلاد.jpg");
    QTest::newRow("Devanagari") << QStringLiteral("चित्र/जन्मदिन.jpg");
    QTest::newRow("surrogate pairs") << QStringLiteral("\U0001F4C1/\U0001F382\U0001F389.jpg");
    QTest::newRow("combining accents") << QStringLiteral("e\u0301te\u0301.jpg");
    QTest::newRow("capital suffix") << QStringLiteral("PHOTO.JPG");
    QTest::newRow("placeholder") << QStringLiteral("100%1 %2.txt");
}

void tst_windowsFileNames::findsShowsAndDeletesFiles()
{
    QFETCH(const QString, name);
    const QTemporaryDir folder;
    const QString original = folder.filePath(QStringLiteral("original/") + name);
    const QString copy = folder.filePath(QStringLiteral("copy/") + name);
    writeFile(original, "content");
    writeFile(copy, "content");

    WindowDriver driver;
    driver.setFolders({folder.path()});
    QVERIFY(driver.scan());
    const QStringList shown = driver.filePaths();
    QCOMPARE((QSet<QString>{shown.cbegin(), shown.cend()}), (QSet<QString>{original, copy}));
    const QStringList marked = driver.checkedPaths();
    QCOMPARE(marked.size(), 1);

    driver.clickAndCloseBoxes("btnRemoveSelected");
    QVERIFY(!QFile::exists(marked.constFirst()));
    QCOMPARE(QFile::exists(original) + QFile::exists(copy), 1);
}

void tst_windowsFileNames::skipsNamesThatLeadToAnotherFile_data()
{
    QTest::addColumn<QString>("otherName");
    QTest::addColumn<QString>("name");

    QTest::newRow("dot at the end") << QStringLiteral("stop") << QStringLiteral("stop.");
    QTest::newRow("blank at the end") << QStringLiteral("blank.txt") << QStringLiteral("blank.txt ");
    QTest::newRow("device") << QStringLiteral("plain.txt") << QStringLiteral("nul.txt");
    QTest::newRow("port") << QStringLiteral("plain.txt") << QStringLiteral("COM1");
    QTest::newRow("unpaired surrogate") << QStringLiteral("plain.txt") << QString(QChar(0xD83D));
}

/// The path of such a file leads to another file, which the program would read, show and delete instead.
void tst_windowsFileNames::skipsNamesThatLeadToAnotherFile()
{
    QFETCH(const QString, otherName);
    QFETCH(const QString, name);
    const QTemporaryDir folder;
    writeFile(folder.filePath(otherName), "content");
    if (!writeFileWithExactName(folder.path(), name, "content"))
        QSKIP("This system does not allow the name");
    const QStringList collected = collect({folder.path()});
    QVERIFY(removeFileWithExactName(folder.path(), name));
    QCOMPARE(collected, QStringList{folder.filePath(otherName)});
}

QTEST_MAIN(tst_windowsFileNames)
#include "tst_windowsFileNames.moc"
