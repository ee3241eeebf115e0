#include "app/MainWindow.h"

#include "app/CaptionFit.h"
#include "results/GroupMarks.h"
#include "results/ResultTexts.h"
#include "ui_MainWindow.h"

#include <QBrush>
#include <QColor>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int categoryRole = Qt::UserRole + 1;

QSet<QString> checkedFiles(const QTreeWidgetItem *groupRow)
{
    QSet<QString> checked;
    for (int i = 0; i < groupRow->childCount(); ++i) {
        const QTreeWidgetItem *const fileRow = groupRow->child(i);
        if (fileRow->checkState(0) == Qt::Checked)
            checked.insert(fileRow->text(0));
    }
    return checked;
}

} // namespace

void MainWindow::onCategoryClicked(QString type)
{
    runLoad([this, type = std::move(type)] { loadCategory(type); });
}

/// Runs \a load as the one category load under way, then whatever asked to run in the meantime.
///
/// A load processes pending events when it closes the loading panel. A delivery, a second load or a deletion
/// that came in there would pull the groups from under the first one, or save its ticks into the wrong
/// groups.
void MainWindow::runLoad(const std::function<void()> &load)
{
    if (postponeDuringLoad([this, load] { runLoad(load); }))
        return;
    {
        const QScopedValueRollback loading(categoryLoading, true);
        load();
    }
    while (!postponedSteps.isEmpty())
        postponedSteps.takeFirst()();
}

/// Keeps \a step for the end of the category load under way; false when there is none and the step may run at
/// once.
bool MainWindow::postponeDuringLoad(const std::function<void()> &step)
{
    if (categoryLoading)
        postponedSteps.append(step);
    return categoryLoading;
}

void MainWindow::loadCategory(const QString &type)
{
    allSelected = false;
    saveCheckStates();
    rebuildCategoryIndex();
    loadedGroupCount = 0;
    allBatchesLoaded = false;
    currentCategory = type;
    hideLoadingOverlay();
    clearTree();

    ui->labelScanStatus->setText(tr("Loading duplicate files, please wait..."));
    showLoadingOverlay();
    ui->treeDuplicates->setUpdatesEnabled(false);
    const QList<DuplicateGroup *> list = groupsOf(type);
    if (list.isEmpty()) {
        showNoDuplicates();
        return;
    }
    ui->labelStatsInfo->setText(ResultTexts::totals(list));
    fitCaption(ui->labelStatsInfo);
    ui->treeDuplicates->setUpdatesEnabled(true);
    loadNextBatch();

    hideLoadingOverlay();
    ui->labelScanStatus->setText(tr("Loading Complete"));
    setCategoryButtonsEnabled(true);
    setResultActionsEnabled(true);
}

/// Takes all rows down and shows the tree's top again.
///
/// From where it stood, the scroll bar would be pushed back to the end of the next, shorter list, and its
/// change ask for more batches of it.
void MainWindow::removeRows()
{
    ui->treeDuplicates->verticalScrollBar()->setValue(0);
    ui->treeDuplicates->clear();
}

/// Has the group rows from row \a first on span all columns. Each call lays the tree out anew: it is made
/// once for a batch, never for a row.
void MainWindow::spanGroupRows(int first)
{
    for (int i = first; i < ui->treeDuplicates->topLevelItemCount(); ++i)
        ui->treeDuplicates->topLevelItem(i)->setFirstColumnSpanned(true);
}

void MainWindow::clearTree()
{
    removeRows();
    for (int i = ui->treeDuplicates->topLevelItemCount() - 1; i >= 0; --i) {
        if (ui->treeDuplicates->topLevelItem(i)->text(0) == tr("No duplicate files"))
            delete ui->treeDuplicates->takeTopLevelItem(i);
    }
}

/// Ends the load of a category without groups.
void MainWindow::showNoDuplicates()
{
    hideLoadingOverlay();
    ui->labelScanStatus->setText(tr("No duplicate files found."));
    if (ui->treeDuplicates->topLevelItemCount() == 0) {
        auto *const row = new QTreeWidgetItem(QStringList{tr("No duplicate files")});
        row->setTextAlignment(0, Qt::AlignCenter);
        row->setFlags(Qt::NoItemFlags);
        row->setForeground(0, QBrush(QColor(u"#aaa"_s)));
        ui->treeDuplicates->addTopLevelItem(row);
    }
    setCategoryButtonsEnabled(true);
    setResultActionsEnabled(false);
    ui->treeDuplicates->setUpdatesEnabled(true);
}

void MainWindow::loadNextBatch()
{
    if (batchLoading || allBatchesLoaded)
        return;
    batchLoading = true;
    const QList<DuplicateGroup *> list = groupsOf(currentCategory);
    const auto count = static_cast<qint32>(list.size());
    const qint32 end =
        std::min(count, loadedGroupCount + (loadedGroupCount == 0 ? firstBatchSize : nextBatchSize));
    ui->treeDuplicates->setUpdatesEnabled(false);
    for (qint32 i = loadedGroupCount; i < end; ++i)
        createGroupItem(*list.at(i))->setData(0, categoryRole, currentCategory);
    spanGroupRows(loadedGroupCount);
    ui->treeDuplicates->setUpdatesEnabled(true);
    ui->treeDuplicates->viewport()->update();
    loadedGroupCount = end;
    allBatchesLoaded = end >= count;
    batchLoading = false;
}

void MainWindow::on_treeDuplicates_scroll()
{
    if (allBatchesLoaded || batchLoading || categoryLoading)
        return;
    // Scroll steps minus pixels: odd, but it only decides how early the next batch comes.
    const QScrollBar *const bar = ui->treeDuplicates->verticalScrollBar();
    const int remaining = bar->maximum() - (ui->treeDuplicates->viewport()->height() + bar->value());
    if (remaining < 100)
        loadNextBatch();
}

void MainWindow::refreshCurrentBatchUI()
{
    if (postponeDuringLoad([this] { refreshCurrentBatchUI(); }))
        return;
    removeRows();
    const QList<DuplicateGroup *> list = groupsByCategory.value(currentCategory);
    const auto count = static_cast<qint32>(list.size());
    const qint32 end = std::min(count, firstBatchSize);
    for (qint32 i = 0; i < end; ++i)
        createGroupItem(*list.at(i));
    spanGroupRows(0);
    loadedGroupCount = end;
    allBatchesLoaded = end >= count;
}

QList<DuplicateGroup *> MainWindow::groupsOf(const QString &category) const
{
    return category == u"all" ? allGroups : groupsByCategory.value(category);
}

void MainWindow::rebuildCategoryIndex()
{
    allGroups.clear();
    groupsByCategory.clear();
    for (DuplicateGroup &group : groups) {
        allGroups.append(&group);
        groupsByCategory[group.category].append(&group);
    }
    if (!allGroups.isEmpty())
        groupsByCategory.insert(u"all"_s, allGroups);
}

void MainWindow::saveCheckStates()
{
    const QList<DuplicateGroup *> shown = groupsByCategory.value(currentCategory);
    QList<QSet<QString>> checked;
    for (int i = 0; i < ui->treeDuplicates->topLevelItemCount(); ++i)
        checked.append(checkedFiles(ui->treeDuplicates->topLevelItem(i)));
    saveMarks(groups, shown, checked);
}

void MainWindow::setResultActionsEnabled(bool enabled)
{
    for (QPushButton *button : {ui->btnSelectAll, ui->btnUnselect, ui->btnRemoveSelected})
        button->setEnabled(enabled);
}
