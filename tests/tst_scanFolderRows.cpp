#include "app/Volume.h"
#include "tests/support/PrivateCalls.h"
#include "tests/support/WindowDriver.h"

#include <QDir>
#include <QFileIconProvider>
#include <QHBoxLayout>
#include <QTemporaryDir>
#include <QTest>

using Qt::StringLiterals::operator""_s;

/// The look of the rows in the list of folders.
class tst_scanFolderRows : public QObject
{
    Q_OBJECT

private slots:
    void buildsVolumeRows();
    void volumeRowsHaveADeleteButton();
    void showsALockOnReadOnlyVolumes();
    void highlightsNoRowAtStartup();
    void buildsRowsOfAddedFolders();
    void showsMarkupInNamesAsPlainText();

private:
    static QListWidget *list(WindowDriver &driver)
    {
        return driver.find<QListWidget>("listScanFolders");
    }

    static QWidget *row(WindowDriver &driver, int index)
    {
        return list(driver)->itemWidget(list(driver)->item(index));
    }

    static void verifyVolumeRow(const QWidget &row, const QString &path);
};

void tst_scanFolderRows::verifyVolumeRow(const QWidget &row, const QString &path)
{
    const auto *const layout = qobject_cast<QHBoxLayout *>(row.layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins(5, 2, 5, 2));
    QCOMPARE(layout->spacing(), 10);
    QCOMPARE(layout->count(), 5);

    const QList<QLabel *> labels = row.findChildren<QLabel *>();
    QCOMPARE(labels.size(), 4);
    QCOMPARE(labels.at(0)->text(), path);
    QCOMPARE(labels.at(0)->pos(), QPoint(16, 14));
    QCOMPARE(layout->indexOf(labels.at(0)), -1);
    QVERIFY(labels.at(0)->isHidden());

    QCOMPARE(layout->itemAt(0)->widget(), labels.at(1));
    const QPixmap icon = QFileIconProvider().icon(QFileInfo(path)).pixmap(24, 24);
    QVERIFY(!icon.isNull());
    QCOMPARE(labels.at(1)->pixmap().toImage(), icon.toImage());
    QCOMPARE(layout->itemAt(1)->widget(), labels.at(2));
    QCOMPARE(labels.at(2)->text(), path);
    QCOMPARE(labels.at(2)->styleSheet(), u"font-size: 14px;"_s);
    QCOMPARE(layout->itemAt(2)->widget(), labels.at(3));
    QCOMPARE(labels.at(3)->text(), QString());
    QVERIFY(layout->itemAt(3)->spacerItem());
    QVERIFY(layout->itemAt(4)->widget());
}

void tst_scanFolderRows::buildsVolumeRows()
{
    WindowDriver driver;
    listVolumes(driver.window(), {{.rootPath = QDir::rootPath()}, {.rootPath = QDir::tempPath()}});
    const QStringList paths = driver.folders();
    QCOMPARE(paths.size(), 2);
    for (int i = 0; i < paths.size(); ++i) {
        QCOMPARE(list(driver)->item(i)->sizeHint(), QSize(0, 45));
        QCOMPARE(list(driver)->item(i)->text(), QString());
        verifyVolumeRow(*row(driver, i), paths.at(i));
    }
}

void tst_scanFolderRows::volumeRowsHaveADeleteButton()
{
    WindowDriver driver;
    listVolumes(driver.window(), {{.rootPath = QDir::rootPath()}});
    const auto *const button = qobject_cast<QPushButton *>(row(driver, 0)->layout()->itemAt(4)->widget());
    QVERIFY(button);
    QCOMPARE(button->minimumSize(), QSize(24, 24));
    QCOMPARE(button->maximumSize(), QSize(24, 24));
    QCOMPARE(button->text(), QString());
    QCOMPARE(button->iconSize(), QSize(20, 20));
    QCOMPARE(
        button->icon().pixmap(20).toImage(), QIcon(u":/icon/images/delete_icon.png"_s).pixmap(20).toImage());
    QCOMPARE(button->styleSheet(), u"border: none;"_s);
}

void tst_scanFolderRows::showsALockOnReadOnlyVolumes()
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

void tst_scanFolderRows::highlightsNoRowAtStartup()
{
    WindowDriver driver;
    QCOMPARE(list(driver)->currentRow(), -1);
    QVERIFY(list(driver)->selectedItems().isEmpty());
}

void tst_scanFolderRows::buildsRowsOfAddedFolders()
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

void tst_scanFolderRows::showsMarkupInNamesAsPlainText()
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

QTEST_MAIN(tst_scanFolderRows)
#include "tst_scanFolderRows.moc"
