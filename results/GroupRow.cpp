// Window layer: the functions of MainWindow that create the rows of a group.

#include "app/MainWindow.h"

#include "results/ResultTexts.h"
#include "results/ThumbnailQueue.h"
#include "scan/FileCategories.h"
#include "ui_MainWindow.h"

#include <QFileIconProvider>

using Qt::StringLiterals::operator""_s;

namespace {

/// Creates the row of a file that exists, without an icon.
QTreeWidgetItem *createFileRow(const QFileInfo &file, const QString &path, bool marked)
{
    auto *const row = new QTreeWidgetItem;
    row->setText(0, path);
    row->setCheckState(0, marked ? Qt::Checked : Qt::Unchecked);
    // Kept deliberately: size and time are in columns that the tree does not show to the user.
    row->setText(1, ResultTexts::fileSize(file.size()));
    row->setText(2, file.fileTime(QFileDevice::FileModificationTime).toString(u"yyyy-MM-dd hh:mm:ss"_s));
    return row;
}

/// \a checked is the number of checked rows, \a files the number of files of the group.
///
/// Kept deliberately: \a files includes files that no longer exist and have no row. The user sees such a
/// group as partially checked even if all its rows are checked.
Qt::CheckState groupCheckState(qsizetype checked, qsizetype files)
{
    if (checked == 0)
        return Qt::Unchecked;
    return checked == files ? Qt::Checked : Qt::PartiallyChecked;
}

} // namespace

QTreeWidgetItem *MainWindow::createGroupItem(const DuplicateGroup &group)
{
    return createGroupItem(
        group.fileName, group.files, group.size, group.modified, group.hasMarkedFiles, group.markedFiles);
}

/// Appends the row of one group, with a child row for each file that still exists, and returns it.
///
/// Kept deliberately: \a modified and \a hasMarkedFiles are unused; the user sees no difference.
QTreeWidgetItem *MainWindow::createGroupItem(const QString &fileName, const QStringList &files, qint64 size,
    [[maybe_unused]] const QDateTime &modified, [[maybe_unused]] bool hasMarkedFiles,
    const QSet<QString> &markedFiles)
{
    auto *const groupRow =
        new QTreeWidgetItem(QStringList{ResultTexts::groupTitle(fileName, size, files.size())});
    // Kept deliberately: without effect, because the row is not in a tree yet; the user sees collapsed
    // groups.
    groupRow->setExpanded(true);
    // Kept deliberately: the user's click on the check box of a group does not check its files.
    groupRow->setFlags(groupRow->flags() | Qt::ItemIsUserCheckable);

    const QFileIconProvider icons;
    QList<QTreeWidgetItem *> fileRows;
    QList<int> pictureRows;
    qsizetype checked = 0;
    for (const QString &path : files) {
        const QFileInfo file(path);
        if (!file.exists())
            continue;
        const bool marked = markedFiles.contains(path);
        checked += marked ? 1 : 0;
        QTreeWidgetItem *const row = createFileRow(file, path, marked);
        if (hasThumbnail(lowerCaseSuffix(path)))
            pictureRows.append(static_cast<int>(fileRows.size()));
        else
            row->setIcon(0, icons.icon(file));
        fileRows.append(row);
    }
    groupRow->addChildren(fileRows);
    groupRow->setCheckState(0, groupCheckState(checked, files.size()));
    ui->treeDuplicates->addTopLevelItem(groupRow);
    thumbnails->add(groupRow, pictureRows);
    return groupRow;
}
