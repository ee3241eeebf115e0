// Window layer: the functions of MainWindow that mark and delete files.

#include "app/MainWindow.h"

#include "results/GroupDeletion.h"
#include "ui_MainWindow.h"

#include <QMessageBox>
#include <QSignalBlocker>

void MainWindow::selectAllGroups()
{
    allSelected = true;
    if (ui->treeDuplicates->topLevelItemCount() == 0)
        return;
    for (DuplicateGroup &group : groups)
        markAllButKeptCopy(group);
    rebuildCategoryIndex();
    refreshCurrentBatchUI();
}

void MainWindow::unselectAll()
{
    allSelected = false;
    QTreeWidget *const tree = ui->treeDuplicates;
    if (tree->topLevelItemCount() == 0) {
        showNote(tr("NOTE"), tr("There are no duplicate files to work with."));
        return;
    }
    // Kept deliberately: unlike Select All, Unselect changes the shown category only. The user's next Delete
    // removes the marked files of the other categories.
    const QList<DuplicateGroup *> shown = groupsByCategory.value(currentCategory);
    for (DuplicateGroup *group : shown)
        setMarkedFiles(*group, {});

    tree->setUpdatesEnabled(false);
    {
        const QSignalBlocker blocker(tree);
        for (int i = 0; i < tree->topLevelItemCount(); ++i) {
            QTreeWidgetItem *const groupRow = tree->topLevelItem(i);
            groupRow->setCheckState(0, Qt::Unchecked);
            for (int j = 0; j < groupRow->childCount(); ++j)
                groupRow->child(j)->setCheckState(0, Qt::Unchecked);
        }
    }
    tree->setUpdatesEnabled(true);
    tree->viewport()->update();
}

void MainWindow::removeSelected()
{
    saveCheckStates();
    if (!hasMarkedFiles(groups)) {
        showNote(tr("NOTE"), tr("Please select the files you want to delete!"));
        return;
    }
    const DeletionResult result = deleteMarkedFiles(groups);
    rebuildCategoryIndex();
    // Kept deliberately: the totals line is not updated; the user sees the totals of the last category load.
    refreshCurrentBatchUI();
    showNote(tr("Deletion Complete"),
        tr("Deleted %1 files successfully, %2 files failed.").arg(result.deleted).arg(result.failed));
}

void MainWindow::showNote(const QString &title, const QString &text)
{
    QMessageBox::information(this, title, text, QMessageBox::Ok, QMessageBox::NoButton);
}
