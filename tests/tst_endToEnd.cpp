#include "tests/support/TestFiles.h"
#include "tests/support/WindowDriver.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

/// The main use case: add a folder, scan it, review the duplicates, delete the marked copies.
class tst_endToEnd : public QObject
{
    Q_OBJECT

private slots:
    void deletesOnlyMarkedCopies();
};

void tst_endToEnd::deletesOnlyMarkedCopies()
{
    const QTemporaryDir folder;
    const auto path = [&folder](const char *name) { return folder.filePath(QLatin1StringView(name)); };
    writeFile(path("photos/cat.jpg"), QByteArray(20000, 'c'));
    writeFile(path("photos/copy of cat.jpg"), QByteArray(20000, 'c'));
    writeFile(path("notes.txt"), "notes");
    writeFile(path("backup/notes.txt"), "notes");
    writeFile(path("backup/other.txt"), "other");
    writeFile(path("alone.pdf"), "a unique file");

    WindowDriver driver;
    driver.setFolders({folder.path()});
    QVERIFY(driver.scan());

    QCOMPARE(driver.groupTitles().size(), 2);
    const QStringList shown = driver.filePaths();
    const QStringList marked = driver.checkedPaths();
    QCOMPARE(QSet<QString>(shown.cbegin(), shown.cend()),
        (QSet<QString>{path("photos/cat.jpg"), path("photos/copy of cat.jpg"), path("notes.txt"),
            path("backup/notes.txt")}));
    QCOMPARE(marked.size(), 2);

    QCOMPARE(driver.clickAndCloseBoxes("btnRemoveSelected"),
        (QList<ShownBox>{{QStringLiteral("Deletion Complete"),
            QStringLiteral("Deleted 2 files successfully, 0 files failed.")}}));
    for (const QString &file : shown)
        QCOMPARE(QFile::exists(file), !marked.contains(file));
    QVERIFY(QFile::exists(path("backup/other.txt")));
    QVERIFY(QFile::exists(path("alone.pdf")));
    QCOMPARE(driver.tree()->topLevelItemCount(), 0);
}

QTEST_MAIN(tst_endToEnd)
#include "tst_endToEnd.moc"
