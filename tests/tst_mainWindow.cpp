#include "tests/support/Receivers.h"
#include "tests/support/WindowDriver.h"

#include <QHBoxLayout>
#include <QMenuBar>
#include <QMetaMethod>
#include <QProgressBar>
#include <QTest>
#include <QToolButton>

using Qt::StringLiterals::operator""_s;

/// The window around the pages: size, top bar, slots and initial state.
class tst_mainWindow : public QObject
{
    Q_OBJECT

private slots:
    void opensInAFixedSize();
    void putsTheTopBarAboveThePages();
    void addsThePagesInOrder();
    void discardsTheFormsCentralWidget();
    void hasAnEmptyMenuBar();
    void configuresTheTreeAndTheProgressBar();
    void declaresItsSlotsInOrderAndNoSignals();
    void startsOnTheStartPageWithAllSelected();
    void goesBackToTheStartPage();
    void connectsTheBackButtonTwice();
};

void tst_mainWindow::opensInAFixedSize()
{
    WindowDriver driver;
    const MainWindow &window = driver.window();
    QCOMPARE(window.objectName(), u"MainWindow"_s);
    QCOMPARE(window.windowTitle(), u"Quillory"_s);
    QCOMPARE(
        window.windowIcon().pixmap(512).toImage(), QIcon(u":/icon/images/logo.png"_s).pixmap(512).toImage());
    QVERIFY(!window.windowIcon().isNull());
    QCOMPARE(window.size(), QSize(1025, 723));
    QCOMPARE(window.minimumSize(), QSize(1025, 723));
    QCOMPARE(window.maximumSize(), QSize(1025, 723));
    QCOMPARE(window.windowFlags() & Qt::WindowType_Mask, Qt::Window);
}

void tst_mainWindow::putsTheTopBarAboveThePages()
{
    WindowDriver driver;
    QWidget *const container = driver.window().centralWidget();
    const auto *const column = qobject_cast<QVBoxLayout *>(container->layout());
    QVERIFY(column);
    QCOMPARE(column->contentsMargins(), QMargins());
    QCOMPARE(column->spacing(), 0);
    auto *const topBar = driver.find("topBar");
    auto *const pages = driver.find("stackedWidget");
    QCOMPARE(column->count(), 2);
    QCOMPARE(column->itemAt(0)->widget(), topBar);
    QCOMPARE(column->itemAt(1)->widget(), pages);
    QCOMPARE(topBar->geometry(), QRect(0, 0, 1025, 60));
    QCOMPARE(pages->geometry(), QRect(0, 60, 1025, container->height() - 60));

    const auto *const row = qobject_cast<QHBoxLayout *>(topBar->layout());
    QVERIFY(row);
    QCOMPARE(row->contentsMargins(), QMargins(15, 5, 15, 5));
    QCOMPARE(row->spacing(), 16);
    QCOMPARE(row->count(), 3);
    QVERIFY(row->itemAt(0)->spacerItem());
    QCOMPARE(row->itemAt(1)->widget(), driver.find<QPushButton>("btnHelp"));
    QCOMPARE(row->itemAt(2)->widget(), driver.find<QToolButton>("btnMenu"));
    for (const char *name : {"btnHelp", "btnMenu"})
        QCOMPARE(driver.find(name)->size(), QSize(32, 32));
    QCOMPARE(driver.find("btnMenu")->geometry().right() + 1, 1025 - 15);
}

void tst_mainWindow::addsThePagesInOrder()
{
    WindowDriver driver;
    const auto *const pages = driver.find<QStackedWidget>("stackedWidget");
    QStringList names;
    for (int i = 0; i < pages->count(); ++i)
        names.append(pages->widget(i)->objectName());
    QCOMPARE(names, (QStringList{u"page"_s, u"scanpage"_s, u"duplicatespage"_s, u"duplicatespage_unused"_s}));
    QVERIFY(pages->widget(3)->children().isEmpty());
}

void tst_mainWindow::discardsTheFormsCentralWidget()
{
    MainWindow window;
    QTRY_VERIFY(!window.findChild<QWidget *>(u"centralwidget"_s));
    QVERIFY(window.findChild<QStackedWidget *>(u"stackedWidget"_s));
}

void tst_mainWindow::hasAnEmptyMenuBar()
{
    WindowDriver driver;
    auto *const bar = driver.find<QMenuBar>("menubar");
    QCOMPARE(driver.window().menuBar(), bar);
    QCOMPARE(bar->parentWidget(), &driver.window());
    QVERIFY(bar->actions().isEmpty());
}

void tst_mainWindow::configuresTheTreeAndTheProgressBar()
{
    WindowDriver driver;
    const QTreeWidget *const tree = driver.tree();
    QCOMPARE(tree->columnCount(), 1);
    QCOMPARE(tree->headerItem()->text(0), u"1"_s);
    QVERIFY(tree->isHeaderHidden());
    QVERIFY(tree->alternatingRowColors());
    QVERIFY(tree->uniformRowHeights());
    QCOMPARE(tree->focusPolicy(), Qt::NoFocus);
    QCOMPARE(tree->topLevelItemCount(), 0);
    QCOMPARE(tree->iconSize(), QSize(32, 32));

    const auto *const bar = driver.find<QProgressBar>("progressBar");
    QCOMPARE(bar->value(), 24);
    QCOMPARE(bar->minimum(), 0);
    QCOMPARE(bar->maximum(), 100);
    const auto *const add = driver.find<QPushButton>("btnAddFolder");
    QCOMPARE(add->iconSize(), QSize(25, 25));
    QCOMPARE(add->icon().pixmap(25).toImage(), QIcon(u":/icon/images/add_icon.png"_s).pixmap(25).toImage());
    QVERIFY(!add->icon().isNull());
}

void tst_mainWindow::declaresItsSlotsInOrderAndNoSignals()
{
    const QMetaObject &meta = MainWindow::staticMetaObject;
    QCOMPARE(QByteArray(meta.className()), QByteArray("MainWindow"));
    QCOMPARE(QByteArray(meta.superClass()->className()), QByteArray("QMainWindow"));
    QByteArrayList slotSignatures;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        slotSignatures.append(meta.method(i).methodSignature());
    }
    QCOMPARE(slotSignatures, (QByteArrayList{"on_btnScanOptions_clicked()", "on_btnStopScan_clicked()",
                                 "onCategoryClicked(QString)", "on_btnBack_clicked()", "showAbout()",
                                 "on_treeDuplicates_scroll()", "refreshCurrentBatchUI()"}));
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
}

void tst_mainWindow::startsOnTheStartPageWithAllSelected()
{
    WindowDriver driver;
    QCOMPARE(driver.page(), u"page"_s);
    QCOMPARE(driver.find("btnAll")->property("selected"), QVariant(true));
    for (const char *name :
        {"btnPictures", "btnVideos", "btnAudios", "btnDocuments", "btnArchives", "btnOthers"})
        QVERIFY(!driver.find(name)->property("selected").toBool());
}

void tst_mainWindow::goesBackToTheStartPage()
{
    WindowDriver driver;
    driver.find<QStackedWidget>("stackedWidget")->setCurrentIndex(2);
    driver.tree()->addTopLevelItem(new QTreeWidgetItem(QStringList{u"row"_s}));
    driver.find("btnStartScan")->setEnabled(false);

    driver.click("btnBack");
    QCOMPARE(driver.page(), u"page"_s);
    QCOMPARE(driver.tree()->topLevelItemCount(), 0);
    QCOMPARE(driver.labelText("labelStatsInfo"), QString());
    QVERIFY(driver.find("btnStartScan")->isEnabled());
}

/// Back is connected by its name and a second time explicitly.
void tst_mainWindow::connectsTheBackButtonTwice()
{
    WindowDriver driver;
    QCOMPARE(clickedReceivers(driver.find<QPushButton>("btnBack")), 2);
}

QTEST_MAIN(tst_mainWindow)
#include "tst_mainWindow.moc"
