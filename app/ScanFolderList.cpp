#include "app/MainWindow.h"

#include "app/ElidedLabel.h"
#include "app/FolderDrop.h"
#include "app/StyleSheets.h"
#include "app/Volume.h"
#include "ui_MainWindow.h"

#include <QFileDialog>
#include <QFileIconProvider>
#include <QHBoxLayout>

// A row's path is the text of its first label. The list is the only store of the folders to scan.

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

/// Replaces the list by a row for each of \a volumes that has a medium.
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
    // The scan reads the row's first label. It is hidden because the label with the name shows the same text.
    auto *const pathHolder = new QLabel(volume.rootPath, row);
    pathHolder->setTextFormat(Qt::PlainText);
    pathHolder->move(16, 14);
    pathHolder->hide();

    auto *const layout = new QHBoxLayout(row);
    layout->setContentsMargins(5, 2, 5, 2);
    layout->setSpacing(10);
    auto *const icon = new QLabel(row);
    icon->setPixmap(QFileIconProvider().icon(QFileInfo(volume.rootPath)).pixmap(24, 24));
    // The desktop may have the icon in a smaller size only.
    icon->setFixedSize(24, 24);
    icon->setAlignment(Qt::AlignCenter);
    layout->addWidget(icon);
    auto *const name = new ElidedLabel(volume.rootPath, row);
    name->setStyleSheet(StyleSheets::folderName);
    layout->addWidget(name);
    auto *const lock = new QLabel(row);
    if (volume.isReadOnly) {
        lock->setPixmap(QPixmap(QStringLiteral(":/icons/lock.png")).scaled(16, 16));
        lock->setAccessibleName(tr("Read-only"));
        lock->setAccessibleDescription(tr("Files on this volume cannot be deleted"));
    }
    layout->addWidget(lock);
    layout->addStretch();
    auto *const deleteButton = new QPushButton(row);
    deleteButton->setFixedSize(24, 24);
    deleteButton->setIcon(QIcon(QStringLiteral(":/icon/images/delete_icon.png")));
    deleteButton->setIconSize(QSize(20, 20));
    deleteButton->setStyleSheet(StyleSheets::borderless);
    layout->addWidget(deleteButton);

    appendFolderRow(row, 45, volume.rootPath, deleteButton);
}

void MainWindow::addFolder()
{
    const QString path =
        QFileDialog::getExistingDirectory(this, tr("Select Folder"), QString(), QFileDialog::ShowDirsOnly);
    if (!path.isEmpty())
        addFolderRow(path);
}

/// Appends a row for a folder that the user has chosen.
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
    auto *const deleteButton = new QPushButton(QStringLiteral("\U0001F5D1\uFE0F"), row);
    deleteButton->setFixedSize(24, 24);
    layout->addWidget(deleteButton);

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

/// Adds the folders that are not listed yet, under their own path or that of a link to them.
///
/// The listed folders themselves are not looked up: a network volume that no longer answers would block the
/// window.
void MainWindow::addDroppedFolders(const QStringList &dropped)
{
    for (const QString &folder : dropped) {
        const QStringList listed = scanFolders();
        if (!listed.contains(folder, pathCase) &&
            !listed.contains(QFileInfo(folder).canonicalFilePath(), pathCase))
            addFolderRow(folder);
    }
}

/// Appends a built row, \a height pixels high, whose button takes it out of the list again.
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
        tr("Takes the place out of the list; nothing on the disk is deleted"));
    // Once only: the button outlives its item until control returns to the event loop.
    connect(
        deleteButton, &QPushButton::clicked, this,
        [this, item] { delete ui->listScanFolders->takeItem(ui->listScanFolders->row(item)); },
        Qt::SingleShotConnection);
}

/// The delete button of a row of the list; null when there is no such row.
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
