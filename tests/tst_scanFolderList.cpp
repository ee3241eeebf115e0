#include "app/Volume.h"
#include "tests/support/DuplicateFiles.h"
#include "tests/support/PrivateCalls.h"
#include "tests/support/Receivers.h"
#include "tests/support/WindowDriver.h"

#include <QDir>
#include <QFileDialog>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

/// The folders on the start page: volumes listed at startup, folders added and rows removed by the user.
class tst_scanFolderList : public QObject
{
    Q_OBJECT

private slots:
    void readsThePropertiesOfAVolume();
    void listsTheReadyVolumes();
    void skipsVolumesThatAreNotReady();
    void opensADialogForOneFolder();
    void addsNothingWhenTheDialogIsCancelled();
    void listsAFolderTwiceIfAddedTwice();
    void scansAFolderTwiceIfListedTwice();
    void removesARowFromTheMiddle();
    void removesARowOnce();
    void removesEveryRow();
    void keepsItsFoldersAfterAScan();

private:
    static QListWidget *list(WindowDriver &driver)
    {
        return driver.find<QListWidget>("listScanFolders");
    }

    static QWidget *row(WindowDriver &driver, int index)
    {
        return list(driver)->itemWidget(list(driver)->item(index));
    }

    static QList<QStorageInfo> readyVolumes();
};

QList<QStorageInfo> tst_scanFolderList::readyVolumes()
{
    QList<QStorageInfo> volumes = QStorageInfo::mountedVolumes();
    volumes.removeIf([](const QStorageInfo &volume) {
        return !volume.isValid() || !volume.isReady() || volume.rootPath().isEmpty();
    });
    return volumes;
}

void tst_scanFolderList::readsThePropertiesOfAVolume()
{
    const QStorageInfo root = QStorageInfo::root();
    QCOMPARE(volumeOf(root), (Volume{root.rootPath(), true, root.isReadOnly()}));
    QVERIFY(!volumeOf(QStorageInfo(u"/there is no such volume"_s)).isReady);
}

void tst_scanFolderList::listsTheReadyVolumes()
{
    WindowDriver driver;
    QStringList expected;
    for (const QStorageInfo &volume : readyVolumes())
        expected.append(volume.rootPath());
    QCOMPARE(driver.folders(), expected);
    if (expected.isEmpty())
        QSKIP("No volume is mounted here, as in a chroot");
    QCOMPARE(list(driver)->spacing(), 6);
}

void tst_scanFolderList::skipsVolumesThatAreNotReady()
{
    WindowDriver driver;
    listVolumes(
        driver.window(), {{.rootPath = u"/first"_s}, {.rootPath = u"/empty drive"_s, .isReady = false},
                             {.rootPath = QString()}, {.rootPath = u"/last"_s}});
    QCOMPARE(driver.folders(), (QStringList{u"/first"_s, u"/last"_s}));
}

void tst_scanFolderList::opensADialogForOneFolder()
{
    WindowDriver driver;
    int dialogs = 0;

    withModalDialogs([&driver] { driver.click("btnAddFolder"); },
        [&](QWidget *dialog) {
            ++dialogs;
            const auto *const chooser = qobject_cast<QFileDialog *>(dialog);
            dialog->close();
            QVERIFY(chooser);
            QCOMPARE(chooser->windowTitle(), u"Select Folder"_s);
            QCOMPARE(chooser->fileMode(), QFileDialog::Directory);
            QVERIFY(chooser->testOption(QFileDialog::ShowDirsOnly));
            QCOMPARE(chooser->parentWidget(), &driver.window());
            QCOMPARE(chooser->directory().absolutePath(), QDir::currentPath());
        });

    QCOMPARE(dialogs, 1);
}

void tst_scanFolderList::addsNothingWhenTheDialogIsCancelled()
{
    WindowDriver driver;
    const QStringList before = driver.folders();
    withModalDialogs([&driver] { driver.click("btnAddFolder"); },
        [](QWidget *dialog) { qobject_cast<QFileDialog *>(dialog)->reject(); });
    QCOMPARE(driver.folders(), before);
    QCOMPARE(list(driver)->count(), before.size());
}

void tst_scanFolderList::listsAFolderTwiceIfAddedTwice()
{
    const QTemporaryDir folder;
    WindowDriver driver;
    const QStringList volumes = driver.folders();
    driver.addFolder(folder.path());
    driver.addFolder(folder.path());
    QCOMPARE(driver.folders(), volumes + QStringList({folder.path(), folder.path()}));
}

void tst_scanFolderList::scansAFolderTwiceIfListedTwice()
{
    const QTemporaryDir folder;
    const QString path = writeCopies(folder.path(), {u"only.txt"_s}, "only").first();
    WindowDriver driver;
    driver.setFolders({folder.path(), folder.path()});

    QVERIFY(driver.scan());
    QCOMPARE(driver.filePaths(), (QStringList{path, path}));
    // A file must never be marked as a copy of itself.
    QCOMPARE(driver.checkedPaths(), QStringList());
}

void tst_scanFolderList::removesARowFromTheMiddle()
{
    const QTemporaryDir folder;
    QStringList paths;
    for (const char *name : {"a", "b", "c", "d"}) {
        paths.append(folder.filePath(QLatin1StringView(name)));
        QVERIFY(QDir().mkpath(paths.last()));
    }
    WindowDriver driver;
    driver.setFolders(paths);
    row(driver, 1)->findChild<QPushButton *>()->click();
    QCOMPARE(driver.folders(), (QStringList{paths.at(0), paths.at(2), paths.at(3)}));
    row(driver, 1)->findChild<QPushButton *>()->click();
    QCOMPARE(driver.folders(), (QStringList{paths.at(0), paths.at(3)}));
    driver.addFolder(paths.at(1));
    QCOMPARE(driver.folders(), (QStringList{paths.at(0), paths.at(3), paths.at(1)}));
}

/// The button exists until control returns to the event loop, so it can be clicked again.
void tst_scanFolderList::removesARowOnce()
{
    WindowDriver driver;
    listVolumes(driver.window(), {{.rootPath = u"/first"_s}, {.rootPath = u"/second"_s}});
    auto *const button = row(driver, 0)->findChild<QPushButton *>();
    QCOMPARE(clickedReceivers(button), 1);
    button->click();
    QCOMPARE(clickedReceivers(button), 0);
    button->click();
    QCOMPARE(driver.folders(), QStringList(u"/second"_s));
}

void tst_scanFolderList::removesEveryRow()
{
    WindowDriver driver;
    QPointer<QWidget> firstRow = row(driver, 0);
    driver.removeAllFolders();
    QCOMPARE(list(driver)->count(), 0);
    QTRY_VERIFY(!firstRow);
}

void tst_scanFolderList::keepsItsFoldersAfterAScan()
{
    const QTemporaryDir folder;
    WindowDriver driver;
    driver.setFolders({folder.path(), folder.path()});
    QVERIFY(driver.scan());
    driver.click("btnBack");
    QCOMPARE(driver.folders(), (QStringList{folder.path(), folder.path()}));
}

QTEST_MAIN(tst_scanFolderList)
#include "tst_scanFolderList.moc"
