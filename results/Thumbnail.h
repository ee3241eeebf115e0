#pragma once

#include <QPixmap>
#include <QString>

class QTreeWidget;
class QTreeWidgetItem;

/// The picture in the file at \a path, scaled to fit into 32 by 32 pixels; null when it cannot be loaded. GUI
/// thread.
QPixmap loadThumbnail(const QString &path);

/// Gives \a row, which must stand in \a tree already, the thumbnail of the file at \a path as its icon as
/// soon as the event loop has time for it. Nothing happens when the row is gone by then or the picture cannot
/// be loaded.
void loadThumbnailLater(QTreeWidget *tree, QTreeWidgetItem *row, const QString &path);
