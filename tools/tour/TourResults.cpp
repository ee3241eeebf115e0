#include "tools/tour/TourResults.h"

#include "scan/FileCategories.h"
#include "tests/support/WindowDriver.h"
#include "tools/tour/Dialogs.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QScrollBar>
#include <QTextStream>

#include <algorithm>

void loadGroups(WindowDriver &driver, int atMost)
{
    QTreeWidget *const tree = driver.tree();
    QScrollBar *const bar = tree->verticalScrollBar();
    int before = 0;
    while (tree->topLevelItemCount() > before && tree->topLevelItemCount() < atMost) {
        before = tree->topLevelItemCount();
        bar->setValue(bar->maximum());
        QCoreApplication::processEvents(); // updates the maximum of the bar
    }
    bar->setValue(0);
}

void expandOneGroup(WindowDriver &driver)
{
    QTreeWidget *const tree = driver.tree();
    QTreeWidgetItem *chosen = tree->topLevelItem(0);
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem *const group = tree->topLevelItem(i);
        if (group->childCount() > 2 && hasThumbnail(lowerCaseSuffix(group->child(0)->text(0)))) {
            chosen = group;
            break;
        }
    }
    if (!chosen)
        return;
    chosen->setExpanded(true);
    tree->scrollToItem(chosen, QAbstractItemView::PositionAtTop);
    settle();
}

void printGroups(WindowDriver &driver, int atMost)
{
    QTextStream out(stdout);
    const QTreeWidget *const tree = driver.tree();
    const int shown = std::min(tree->topLevelItemCount(), atMost);
    for (int i = 0; i < shown; ++i) {
        const QTreeWidgetItem *const group = tree->topLevelItem(i);
        out << '\n' << group->text(0) << '\n';
        for (int j = 0; j < group->childCount(); ++j) {
            const QTreeWidgetItem *const file = group->child(j);
            out << (file->checkState(0) == Qt::Checked ? "    [x] " : "    [ ] ") << file->text(0) << '\n';
        }
    }
    if (shown == atMost)
        out << "\nOnly the first " << atMost << " groups are printed.\n";
}

QSet<QString> filesBelow(const QString &folder)
{
    QSet<QString> paths;
    QDirIterator files(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (files.hasNext())
        paths.insert(files.next());
    return paths;
}
