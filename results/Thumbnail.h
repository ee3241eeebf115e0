#pragma once

#include <QPixmap>
#include <QString>

/// The picture in the file at \a path, scaled to fit into 32 by 32 pixels; null when it cannot be loaded. GUI
/// thread.
QPixmap loadThumbnail(const QString &path);
