#include "app/MainWindow.h"

#include "results/ResultTexts.h"
#include "results/ThumbnailQueue.h"
#include "scan/FileCategories.h"
#include "ui_MainWindow.h"

#include <QFileIconProvider>

namespace {

/// A row for one file that exists; it has no icon yet.
QTreeWidgetItem *createFileRow(const QFileInfo &file, const QString &path, bool ticked)
{
    auto *const row = new QTreeWidgetItem;
    row->setText(0, path);
    row->setCheckState(0, ticked ? Qt::Checked : Qt::Unchecked);
    // The tree shows one column only; size and time are carried for whoever asks the row.
    row->setText(1, ResultTexts::fileSize(file.size()));
    row->setText(
        2, file.fileTime(QFileDevice::FileModificationTime).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")));
    return row;
}

/// \a files counts the files that are gone from the disk as well, so a group whose missing files were ticked
/// never looks fully ticked.
Qt::CheckState groupCheckState(qsizetype ticked, qsizetype files)
{
    if (ticked == 0)
        return Qt::Unchecked;
    return ticked == files ? Qt::Checked : Qt::PartiallyChecked;
}

} // namespace

QTreeWidgetItem *MainWindow::createGroupItem(const DuplicateGroup &group)
{
    return createGroupItem(
        group.fileName, group.files, group.size, group.modified, group.hasMarkedFiles, group.markedFiles);
}

/// Appends the row of one group, with a row for each of its files that still exists, and returns it.
QTreeWidgetItem *MainWindow::createGroupItem(const QString &fileName, const QList<QString> &files,
    qint64 size, [[maybe_unused]] const QDateTime &modified, [[maybe_unused]] bool hasMarkedFiles,
    const QSet<QString> &markedFiles)
{
    auto *const groupRow =
        new QTreeWidgetItem(QStringList{ResultTexts::groupTitle(fileName, size, files.size())});
    // Without effect outside a tree: groups appear collapsed.
    groupRow->setExpanded(true);
    groupRow->setFlags(groupRow->flags() | Qt::ItemIsUserCheckable);

    const QFileIconProvider icons;
    QList<QTreeWidgetItem *> fileRows;
    QList<int> pictureRows;
    qsizetype ticked = 0;
    for (const QString &path : files) {
        const QFileInfo file(path);
        if (!file.exists())
            continue;
        const bool isTicked = markedFiles.contains(path);
        ticked += isTicked ? 1 : 0;
        QTreeWidgetItem *const row = createFileRow(file, path, isTicked);
        if (hasThumbnail(lowerCaseSuffix(path)))
            pictureRows.append(static_cast<int>(fileRows.size()));
        else
            row->setIcon(0, icons.icon(file));
        fileRows.append(row);
    }
    groupRow->addChildren(fileRows);
    groupRow->setCheckState(0, groupCheckState(ticked, files.size()));
    ui->treeDuplicates->addTopLevelItem(groupRow);
    thumbnails->add(groupRow, pictureRows);
    return groupRow;
}
