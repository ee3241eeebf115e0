// Window layer: the functions of MainWindow that build the window and return to the start page.

#include "app/MainWindow.h"

#include "app/CaptionFit.h"
#include "app/FontFallback.h"
#include "app/LightPalette.h"
#include "app/StyleSheets.h"
#include "results/CategoryFilter.h"
#include "results/ResultsDelegate.h"
#include "results/ThumbnailQueue.h"
#include "ui_MainWindow.h"

#include <QHBoxLayout>
#include <QScrollBar>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

using Qt::StringLiterals::operator""_s;

// Without this reference, the linker drops the pictures from the static library. Q_INIT_RESOURCE does not
// work inside a namespace or a member function.
static void initResources()
{
    Q_INIT_RESOURCE(resources);
}

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
    , ui(new Ui::MainWindow)
    , scanOptionsSet(true)
{
    initResources();
    applyLightPalette();
    addFontFallback();
    // Kept deliberately: the form has a fourth, empty page, which the user never sees.
    ui->setupUi(this);
    // Kept deliberately: connected twice, so that one movement of the scroll bar can load two batches.
    connectScrollBar();
    connectScrollBar();

    scanOptions.fileTypes =
        QStringList{u"picture"_s, u"video"_s, u"audio"_s, u"document"_s, u"archive"_s, u"other"_s};
    setWindowTitle(tr("Quillory"));
    setWindowIcon(QIcon(u":/icon/images/logo.png"_s));

    installCentralContainer(createTopBar());
    setStyleSheet(StyleSheets::mainWindow);
    // Kept deliberately: overrides the form's size, 1035 x 720; the user gets a window of fixed size.
    setFixedHeight(723);
    setFixedWidth(1025);

    styleResultsTree();
    connectResultsPage();
    setShownAsSelected(ui->btnAll, true);
    applyStyleSheets();
    fitCaptions();

    connect(ui->btnAddFolder, &QPushButton::clicked, this, &MainWindow::addFolder);
    connect(ui->btnStartScan, &QPushButton::clicked, this, &MainWindow::startScan);
    acceptDroppedFolders();
    populateScanFolders();
    setFocusOrder();
}

MainWindow::~MainWindow()
{
    tasks.finish();
    delete ui;
}

bool MainWindow::finishTasks(QDeadlineTimer deadline)
{
    return tasks.finish(deadline);
}

/// Scales the pictures of the scan page before a scan starts.
///
/// A label scales its picture when it is first painted. Qt scales a large picture on the global thread pool
/// and waits for it: during a scan, the window would freeze until the pool has a free thread.
void MainWindow::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    for (QLabel *picture : {ui->label_2, ui->label_4})
        picture->grab();
}

void MainWindow::connectScrollBar()
{
    const QScrollBar *const bar = ui->treeDuplicates->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) {
        if (bar->maximum() > 0 && value > 0.9 * bar->maximum())
            on_treeDuplicates_scroll();
    });
}

/// Creates the bar with the help and menu buttons at its right edge.
QWidget *MainWindow::createTopBar()
{
    btnHelp = new QPushButton(this);
    btnHelp->setObjectName(u"btnHelp"_s);
    btnHelp->setFixedSize(32, 32);
    btnHelp->setAccessibleName(tr("Help"));
    btnHelp->setAccessibleDescription(tr("Opens the online help page in the browser"));
    btnMenu = new QToolButton(this);
    btnMenu->setObjectName(u"btnMenu"_s);
    btnMenu->setFixedSize(32, 32);
    btnMenu->setPopupMode(QToolButton::InstantPopup);
    btnMenu->setAccessibleName(tr("Menu"));
    btnMenu->setAccessibleDescription(tr("Opens the menu with About, Support and Help"));
    createHelpMenu();

    auto *const topBar = new QWidget(this);
    topBar->setObjectName(u"topBar"_s);
    topBar->setFixedHeight(60);
    auto *const layout = new QHBoxLayout(topBar);
    layout->setContentsMargins(15, 5, 15, 5);
    layout->setSpacing(16);
    layout->addStretch();
    layout->addWidget(btnHelp);
    layout->addWidget(btnMenu);
    connectHelpButton();
    return topBar;
}

/// Places the bar above the pages. The layout reparents the pages; setCentralWidget() then deletes the form's
/// empty central widget.
void MainWindow::installCentralContainer(QWidget *topBar)
{
    auto *const container = new QWidget;
    auto *const layout = new QVBoxLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(topBar);
    layout->addWidget(ui->stackedWidget);
    setCentralWidget(container);
    container->setStyleSheet(StyleSheets::centralContainer);
}

void MainWindow::styleResultsTree()
{
    QTreeWidget *const tree = ui->treeDuplicates;
    ui->treeWidgetBg->setStyleSheet(StyleSheets::treeFrame);
    tree->setStyleSheet(StyleSheets::resultsTree);
    for (QWidget *part : tree->findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
        part->setStyleSheet(StyleSheets::treePart);
    // The tree covers the border of its frame: without the mask, rows would be painted over it.
    tree->setMask(ui->treeWidgetBg->rect().adjusted(1, 1, -1, -1));
    tree->setFocusPolicy(Qt::NoFocus);
    tree->setHeaderHidden(true);
    tree->setIconSize(QSize(32, 32));
    tree->setItemDelegate(new ResultsDelegate(tree));
}

void MainWindow::connectResultsPage()
{
    thumbnails = new ThumbnailQueue(ui->treeDuplicates);
    connectRowMenu();
    const auto connectAction = [this](QPushButton *button, const LoadQueue::Step &action) {
        connect(button, &QPushButton::clicked, this, [this, action] { loadQueue.runBetweenLoads(action); });
    };
    connectAction(ui->btnSelectAll, [this] { selectAllGroups(); });
    connectAction(ui->btnUnselect, [this] { unselectAll(); });
    connectAction(ui->btnRemoveSelected, [this] { removeSelected(); });
    // Kept deliberately: the form has connected this button by name, so one click runs the slot twice. The
    // user sees no difference.
    connect(ui->btnBack, &QPushButton::clicked, this, &MainWindow::on_btnBack_clicked);

    const auto connectCategory = [this, connectAction](QPushButton *button, const QString &key) {
        connectAction(button, [this, button, key] { showCategory(key, button); });
    };
    connectCategory(ui->btnAll, u"all"_s);
    connectCategory(ui->btnPictures, u"picture"_s);
    connectCategory(ui->btnVideos, u"video"_s);
    connectCategory(ui->btnAudios, u"audio"_s);
    connectCategory(ui->btnDocuments, u"document"_s);
    connectCategory(ui->btnArchives, u"archive"_s);
    connectCategory(ui->btnOthers, u"other"_s);
}

void MainWindow::applyStyleSheets()
{
    for (QPushButton *button : categoryButtons())
        button->setStyleSheet(StyleSheets::categoryButton);
    ui->listScanFolders->setStyleSheet(StyleSheets::scanFolderList);
    for (QPushButton *button : {ui->btnScanOptions, ui->btnStopScan})
        button->setStyleSheet(StyleSheets::outlineButton(8));
    for (QPushButton *button : {ui->btnSelectAll, ui->btnUnselect, ui->btnBack})
        button->setStyleSheet(StyleSheets::outlineButton(15));
    ui->btnStartScan->setStyleSheet(StyleSheets::gradientButton(QSize(120, 35), 8));
    ui->btnRemoveSelected->setStyleSheet(StyleSheets::gradientButton(QSize(90, 30), 15));
    ui->btnAddFolder->setIcon(QIcon(u":/icon/images/add_icon.png"_s));
    ui->btnAddFolder->setIconSize(QSize(25, 25));
    ui->btnAddFolder->setText(tr(" Add"));
    ui->btnAddFolder->setStyleSheet(StyleSheets::addFolderButton);
    ui->progressBar->setStyleSheet(StyleSheets::progressBar);
    for (const QAbstractScrollArea *area : {static_cast<QAbstractScrollArea *>(ui->listScanFolders),
             static_cast<QAbstractScrollArea *>(ui->treeDuplicates)}) {
        area->verticalScrollBar()->setStyleSheet(StyleSheets::scrollBar);
        area->horizontalScrollBar()->setStyleSheet(StyleSheets::scrollBar);
    }
}

void MainWindow::fitCaptions()
{
    fitTitle(ui->label);
    fitRow({ui->labelFilesScanned, ui->labelDuplicatesFound, ui->labelElapsedTime});
    // The value label is 4 pixels taller than its neighbours; the margin aligns their texts.
    ui->labelElapsedTimeValue->setContentsMargins(0, 0, 0, 4);

    fitCategoryCaptions();
}

void MainWindow::on_btnBack_clicked()
{
    loadQueue.runBetweenLoads([this] { showStartPage(); });
}

void MainWindow::showStartPage()
{
    ui->stackedWidget->setCurrentWidget(ui->page);
    removeRows();
    ui->labelStatsInfo->clear();
    ui->btnStartScan->setEnabled(true);
}

/// Tab moves through the top bar first, then through each page from top left to bottom right.
void MainWindow::setFocusOrder()
{
    QList<QWidget *> order{btnHelp, btnMenu, ui->listScanFolders};
    for (int i = 0; i < ui->listScanFolders->count(); ++i)
        order.append(folderRowButton(i));
    order << ui->btnAddFolder << ui->btnScanOptions << ui->btnStartScan << ui->btnStopScan;
    for (QPushButton *button : categoryButtons())
        order.append(button);
    order << ui->btnBack << ui->btnUnselect << ui->btnSelectAll << ui->btnRemoveSelected;
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order.at(i - 1), order.at(i));
}
