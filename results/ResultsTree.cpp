// Window layer: the functions of MainWindow that fill the results tree in batches.

#include "app/MainWindow.h"

#include "app/CaptionFit.h"
#include "results/GroupMarks.h"
#include "results/ResultTexts.h"
#include "ui_MainWindow.h"

#include <QBrush>
#include <QColor>
#include <QScrollBar>

#include <algorithm>

using Qt::StringLiterals::operator""_s;

namespace {

// Kept deliberately: set on each row of a batch, never read; the user sees no difference.
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
    loadQueue.runLoad([this, type = std::move(type)] { loadCategory(type); });
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

    // Kept deliberately: this and the following status texts are on the scan page, where the user does not
    // see them.
    ui->labelScanStatus->setText(tr("Loading duplicate files, please wait..."));
    showLoadingOverlay();
    ui->treeDuplicates->setUpdatesEnabled(false);
    const QList<DuplicateGroup *> list = groupsOf(type);
    if (list.isEmpty()) {
        showNoDuplicates();
        return;
    }
    ui->labelStatsInfo->setText(ResultTexts::totals(list));
    fitRow({ui->labelStatsInfo});
    ui->treeDuplicates->setUpdatesEnabled(true);
    loadNextBatch();

    hideLoadingOverlay();
    ui->labelScanStatus->setText(tr("Loading Complete"));
    setCategoryButtonsEnabled(true);
    setResultActionsEnabled(true);
}

/// Scrolls to the top and removes all rows.
///
/// Without the scrolling, the scroll bar would keep its value, be limited to the end of a shorter list, and
/// this change of value would load further batches.
void MainWindow::removeRows()
{
    ui->treeDuplicates->verticalScrollBar()->setValue(0);
    ui->treeDuplicates->clear();
}

/// Makes the group rows from row \a first on span all columns. Called once per batch: a call after each added
/// row would lay out the tree each time.
void MainWindow::spanGroupRows(int first)
{
    for (int i = first; i < ui->treeDuplicates->topLevelItemCount(); ++i)
        ui->treeDuplicates->topLevelItem(i)->setFirstColumnSpanned(true);
}

void MainWindow::clearTree()
{
    removeRows();
    // Kept deliberately: the tree is empty, so the loop never runs; the user sees no difference.
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
    // A load in progress may not have added its first batch yet.
    if (allBatchesLoaded || batchLoading || loadQueue.isLoading())
        return;
    // Kept deliberately: subtracts pixels from scroll steps. This only decides how early the user gets the
    // next batch.
    const QScrollBar *const bar = ui->treeDuplicates->verticalScrollBar();
    const int remaining = bar->maximum() - (ui->treeDuplicates->viewport()->height() + bar->value());
    if (remaining < 100)
        loadNextBatch();
}

void MainWindow::refreshCurrentBatchUI()
{
    loadQueue.runBetweenLoads([this] { showFirstBatch(); });
}

void MainWindow::showFirstBatch()
{
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
