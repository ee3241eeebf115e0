// Window layer: the functions of MainWindow that list the folders to scan.

#include "app/MainWindow.h"

#include "app/ElidedLabel.h"
#include "app/FolderDrop.h"
#include "app/StyleSheets.h"
#include "app/Volume.h"
#include "ui_MainWindow.h"

#include <QFileDialog>
#include <QFileIconProvider>
#include <QHBoxLayout>

using Qt::StringLiterals::operator""_s;

// The list is the only storage of the folders to scan. A row's path is the text of its first label.

namespace {

#ifdef Q_OS_WIN
constexpr Qt::CaseSensitivity pathCase = Qt::CaseInsensitive;
#else
constexpr Qt::CaseSensitivity pathCase = Qt::CaseSensitive;
#endif

} // namespace

void MainWindow::populateScanFolders()
{
    listVolumes(mountedVolumes());
}

/// Replaces the list with a row for each volume that isListed().
void MainWindow::listVolumes(const QList<Volume> &volumes)
{
    ui->listScanFolders->setSpacing(6);
    ui->listScanFolders->clear();
    for (const Volume &volume : volumes) {
        if (isListed(volume))
            addVolumeRow(volume);
    }
    ui->listScanFolders->clearSelection();
    ui->listScanFolders->setCurrentRow(-1);
}

void MainWindow::addVolumeRow(const Volume &volume)
{
    auto *const row = new QWidget(this);
    // Kept deliberately: the scan reads the row's first label, so it needs the path before the icon's label.
    // Hidden, because the user sees the same text in the name label.
    auto *const pathHolder = new QLabel(volume.rootPath, row);
    pathHolder->setTextFormat(Qt::PlainText);
    pathHolder->move(16, 14);
    pathHolder->hide();

    auto *const layout = new QHBoxLayout(row);
    layout->setContentsMargins(5, 2, 5, 2);
    layout->setSpacing(10);
    auto *const icon = new QLabel(row);
    icon->setPixmap(QFileIconProvider().icon(QFileInfo(volume.rootPath)).pixmap(24, 24));
    // The desktop theme may have only a smaller icon.
    icon->setFixedSize(24, 24);
    icon->setAlignment(Qt::AlignCenter);
    layout->addWidget(icon);
    auto *const name = new ElidedLabel(volume.rootPath, row);
    name->setStyleSheet(StyleSheets::folderName);
    layout->addWidget(name);
    auto *const lock = new QLabel(row);
    if (volume.isReadOnly) {
        lock->setPixmap(QPixmap(u":/icons/lock.png"_s).scaled(16, 16));
        lock->setAccessibleName(tr("Read-only"));
        lock->setAccessibleDescription(tr("Files on this volume cannot be deleted"));
    }
    layout->addWidget(lock);
    layout->addStretch();
    auto *const deleteButton = new QPushButton(row);
    deleteButton->setFixedSize(24, 24);
    deleteButton->setIcon(QIcon(u":/icon/images/delete_icon.png"_s));
    deleteButton->setIconSize(QSize(20, 20));
    deleteButton->setStyleSheet(StyleSheets::borderless);
    layout->addWidget(deleteButton);

    appendFolderRow(row, 45, volume.rootPath, deleteButton);
}

/// Kept deliberately: a folder that is already listed gets a second row, and the user's scan walks it twice.
void MainWindow::addFolder()
{
    const QString path =
        QFileDialog::getExistingDirectory(this, tr("Select Folder"), QString(), QFileDialog::ShowDirsOnly);
    if (!path.isEmpty())
        addFolderRow(path);
}

/// Appends the row of a folder that the user has added.
void MainWindow::addFolderRow(const QString &path)
{
    auto *const row = new QWidget(this);
    auto *const layout = new QHBoxLayout(row);
    layout->setContentsMargins(10, 6, 10, 6);
    layout->setSpacing(8);
    auto *const pathLabel = new ElidedLabel(path, row);
    pathLabel->setStyleSheet(StyleSheets::addedFolderPath);
    layout->addWidget(pathLabel);
    layout->addStretch();
    auto *const deleteButton = new QPushButton(u"\U0001F5D1\uFE0F"_s, row);
    deleteButton->setFixedSize(24, 24);
    layout->addWidget(deleteButton);

    // Kept deliberately: the user sees a row that is 3 pixels taller than the row of a volume.
    appendFolderRow(row, 48, path, deleteButton);
}

void MainWindow::setScanFolders(const QStringList &folders)
{
    ui->listScanFolders->clear();
    for (const QString &folder : folders)
        addFolderRow(folder);
}

void MainWindow::acceptDroppedFolders()
{
    connect(new FolderDrop(ui->listScanFolders), &FolderDrop::dropped, this, &MainWindow::addDroppedFolders);
}

/// Adds the dropped folders that are not listed yet. A link to a listed folder counts as listed.
///
/// Does not access the listed folders: a network volume that does not respond would block the window.
void MainWindow::addDroppedFolders(const QStringList &dropped)
{
    for (const QString &folder : dropped) {
        const QStringList listed = scanFolders();
        if (!listed.contains(folder, pathCase) &&
            !listed.contains(QFileInfo(folder).canonicalFilePath(), pathCase))
            addFolderRow(folder);
    }
}

/// Appends \a row, \a height pixels high. Its \a deleteButton removes it from the list.
void MainWindow::appendFolderRow(QWidget *row, int height, const QString &path, QPushButton *deleteButton)
{
    auto *const item = new QListWidgetItem;
    item->setSizeHint(QSize(0, height));
    ui->listScanFolders->addItem(item);
    ui->listScanFolders->setItemWidget(item, row);
    QWidget *const previous = folderRowButton(ui->listScanFolders->count() - 2);
    setTabOrder(previous ? previous : ui->listScanFolders, deleteButton);
    deleteButton->setAccessibleName(tr("Remove %1 from the list").arg(path));
    deleteButton->setAccessibleDescription(
        tr("Removes the folder from the list; nothing on the disk is deleted"));
    // Single shot: the button outlives its item until control returns to the event loop.
    connect(
        deleteButton, &QPushButton::clicked, this,
        [this, item] { delete ui->listScanFolders->takeItem(ui->listScanFolders->row(item)); },
        Qt::SingleShotConnection);
}

/// Returns the delete button of row \a row of the list; null if there is no such row.
QWidget *MainWindow::folderRowButton(int row) const
{
    const QWidget *const widget = ui->listScanFolders->itemWidget(ui->listScanFolders->item(row));
    return widget ? widget->findChild<QPushButton *>() : nullptr;
}

QStringList MainWindow::scanFolders() const
{
    QStringList folders;
    for (int i = 0; i < ui->listScanFolders->count(); ++i) {
        const QWidget *const row = ui->listScanFolders->itemWidget(ui->listScanFolders->item(i));
        if (const auto *const label = row ? row->findChild<QLabel *>() : nullptr)
            folders.append(label->text());
    }
    return folders;
}
