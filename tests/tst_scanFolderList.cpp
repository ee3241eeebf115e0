#include "app/Volume.h"
#include "tests/support/DuplicateFiles.h"
#include "tests/support/PrivateCalls.h"
#include "tests/support/Receivers.h"
#include "tests/support/WindowDriver.h"

#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QHBoxLayout>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

/// The folders on the start page: volumes listed at startup, folders added and rows removed by the user.
class tst_scanFolderList : public QObject
{
    Q_OBJECT

private slots:
    void queriesTheSystemAboutAVolume();
    void listsTheReadyVolumes();
    void skipsVolumesThatAreNotReady();
    void buildsVolumeRows();
    void marksReadOnlyVolumesWithALock();
    void highlightsNoRowAtTheStart();
    void buildsRowsOfAddedFolders();
    void opensADialogForOneFolder();
    void addsNothingWhenTheDialogIsCancelled();
    void listsAFolderTwiceWhenItIsAddedTwice();
    void scansAFolderTwiceWhenItIsListedTwice();
    void removesARowFromTheMiddle();
    void removesARowOnce();
    void removesEveryRow();
    void showsNamesWithMarkupAsTheyAre();
    void survivesAScan();

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

void tst_scanFolderList::queriesTheSystemAboutAVolume()
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
        QSKIP("No volume is mounted here, as in a changed root");
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

void tst_scanFolderList::buildsVolumeRows()
{
    WindowDriver driver;
    listVolumes(driver.window(), {{.rootPath = QDir::rootPath()}, {.rootPath = QDir::tempPath()}});
    const QStringList paths = driver.folders();
    for (int i = 0; i < paths.size(); ++i) {
        QCOMPARE(list(driver)->item(i)->sizeHint(), QSize(0, 45));
        QCOMPARE(list(driver)->item(i)->text(), QString());
        const auto *const layout = qobject_cast<QHBoxLayout *>(row(driver, i)->layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins(5, 2, 5, 2));
        QCOMPARE(layout->spacing(), 10);
        QCOMPARE(layout->count(), 5);

        const QList<QLabel *> labels = row(driver, i)->findChildren<QLabel *>();
        QCOMPARE(labels.size(), 4);
        QCOMPARE(labels.at(0)->text(), paths.at(i));
        QCOMPARE(labels.at(0)->pos(), QPoint(16, 14));
        QCOMPARE(layout->indexOf(labels.at(0)), -1);
        QVERIFY(labels.at(0)->isHidden());

        QCOMPARE(layout->itemAt(0)->widget(), labels.at(1));
        const QPixmap icon = QFileIconProvider().icon(QFileInfo(paths.at(i))).pixmap(24, 24);
        QVERIFY(!icon.isNull());
        QCOMPARE(labels.at(1)->pixmap().toImage(), icon.toImage());
        QCOMPARE(layout->itemAt(1)->widget(), labels.at(2));
        QCOMPARE(labels.at(2)->text(), paths.at(i));
        QCOMPARE(labels.at(2)->styleSheet(), u"font-size: 14px;"_s);
        QCOMPARE(layout->itemAt(2)->widget(), labels.at(3));
        QCOMPARE(labels.at(3)->text(), QString());
        QVERIFY(layout->itemAt(3)->spacerItem());

        const auto *const button = qobject_cast<QPushButton *>(layout->itemAt(4)->widget());
        QVERIFY(button);
        QCOMPARE(button->minimumSize(), QSize(24, 24));
        QCOMPARE(button->maximumSize(), QSize(24, 24));
        QCOMPARE(button->text(), QString());
        QCOMPARE(button->iconSize(), QSize(20, 20));
        QCOMPARE(button->icon().pixmap(20).toImage(),
            QIcon(u":/icon/images/delete_icon.png"_s).pixmap(20).toImage());
        QCOMPARE(button->styleSheet(), u"border: none;"_s);
    }
}

void tst_scanFolderList::marksReadOnlyVolumesWithALock()
{
    WindowDriver driver;
    listVolumes(
        driver.window(), {{.rootPath = u"/writable"_s}, {.rootPath = u"/locked"_s, .isReadOnly = true}});
    QCOMPARE(driver.folders(), (QStringList{u"/writable"_s, u"/locked"_s}));
    const QImage lock = QPixmap(u":/icons/lock.png"_s).scaled(16, 16).toImage();
    QCOMPARE(lock.size(), QSize(16, 16));
    const auto shownLock = [&driver](int index) {
        return row(driver, index)->findChildren<QLabel *>().at(3)->pixmap();
    };
    QVERIFY(shownLock(0).isNull());
    QCOMPARE(shownLock(1).toImage(), lock);
}

void tst_scanFolderList::highlightsNoRowAtTheStart()
{
    WindowDriver driver;
    QCOMPARE(list(driver)->currentRow(), -1);
    QVERIFY(list(driver)->selectedItems().isEmpty());
}

void tst_scanFolderList::buildsRowsOfAddedFolders()
{
    const QTemporaryDir folder;
    WindowDriver driver;
    driver.setFolders({folder.path()});
    QCOMPARE(list(driver)->item(0)->sizeHint(), QSize(0, 48));
    QCOMPARE(list(driver)->item(0)->text(), QString());
    const auto *const layout = qobject_cast<QHBoxLayout *>(row(driver, 0)->layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins(10, 6, 10, 6));
    QCOMPARE(layout->spacing(), 8);
    QCOMPARE(layout->count(), 3);

    QCOMPARE(row(driver, 0)->findChildren<QLabel *>().size(), 1);
    const auto *const label = qobject_cast<QLabel *>(layout->itemAt(0)->widget());
    QVERIFY(label);
    QCOMPARE(label->text(), folder.path());
    QCOMPARE(label->styleSheet(), u"font-size: 14px; color: #333;"_s);
    QVERIFY(layout->itemAt(1)->spacerItem());
    const auto *const button = qobject_cast<QPushButton *>(layout->itemAt(2)->widget());
    QVERIFY(button);
    QCOMPARE(button->text(), u"\U0001F5D1\uFE0F"_s);
    QVERIFY(button->icon().isNull());
    QCOMPARE(button->styleSheet(), QString());
    QCOMPARE(button->minimumSize(), QSize(24, 24));
    QCOMPARE(button->maximumSize(), QSize(24, 24));
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

void tst_scanFolderList::listsAFolderTwiceWhenItIsAddedTwice()
{
    const QTemporaryDir folder;
    WindowDriver driver;
    const QStringList volumes = driver.folders();
    driver.addFolder(folder.path());
    driver.addFolder(folder.path());
    QCOMPARE(driver.folders(), volumes + QStringList({folder.path(), folder.path()}));
}

void tst_scanFolderList::scansAFolderTwiceWhenItIsListedTwice()
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

void tst_scanFolderList::showsNamesWithMarkupAsTheyAre()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"<b>bold<b> &amp;"_s);
    if (!QDir().mkpath(path))
        QSKIP("Folders cannot have this name here");
    WindowDriver driver;
    driver.addFolder(path);
    QCOMPARE(driver.folders().last(), path);
    for (int i = 0; i < list(driver)->count(); ++i) {
        for (const QLabel *label : row(driver, i)->findChildren<QLabel *>()) {
            if (!label->text().isEmpty())
                QCOMPARE(label->textFormat(), Qt::PlainText);
        }
    }
}

void tst_scanFolderList::survivesAScan()
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
