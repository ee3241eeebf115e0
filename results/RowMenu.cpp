// Window layer: the context menu of the rows, and the function of MainWindow that opens it.

#include "results/RowMenu.h"

#include "app/MainWindow.h"
#include "results/FileManager.h"
#include "ui_MainWindow.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QMenu>

namespace {

void copyPaths(const QStringList &paths)
{
    QStringList lines;
    for (const QString &path : paths)
        lines.append(QDir::toNativeSeparators(path));
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

QStringList pathsBelow(const QTreeWidgetItem *groupRow)
{
    QStringList paths;
    for (int i = 0; i < groupRow->childCount(); ++i)
        paths.append(groupRow->child(i)->text(0));
    return paths;
}

void addFileActions(QMenu *menu, const QString &path)
{
    QObject::connect(
        menu->addAction(MainWindow::tr("Open")), &QAction::triggered, menu, [path] { openFile(path); });
    QObject::connect(menu->addAction(MainWindow::tr("Show in folder")), &QAction::triggered, menu,
        [path] { showInFolder(path); });
    QObject::connect(menu->addAction(MainWindow::tr("Copy path")), &QAction::triggered, menu,
        [path] { copyPaths({path}); });
}

} // namespace

QMenu *createRowMenu(const QTreeWidgetItem *row, QWidget *parent)
{
    const bool isFileRow = row != nullptr && row->parent() != nullptr;
    const QStringList groupPaths = row ? pathsBelow(row) : QStringList();
    if (!isFileRow && groupPaths.isEmpty())
        return nullptr;
    auto *const menu = new QMenu(parent);
    if (isFileRow)
        addFileActions(menu, row->text(0));
    else
        QObject::connect(menu->addAction(MainWindow::tr("Copy paths")), &QAction::triggered, menu,
            [groupPaths] { copyPaths(groupPaths); });
    return menu;
}

/// Opens context menus with popup(), which does not block: new results may replace the rows meanwhile.
void MainWindow::connectRowMenu()
{
    QTreeWidget *const tree = ui->treeDuplicates;
    tree->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(tree, &QTreeWidget::customContextMenuRequested, this, [this, tree](const QPoint &position) {
        QMenu *const menu = createRowMenu(tree->itemAt(position), this);
        if (!menu)
            return;
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->popup(tree->viewport()->mapToGlobal(position));
    });
}
