#pragma once

#include <QPixmap>
#include <QString>

/// Loads the picture at \a path, scaled to fit into 32 by 32 pixels; null if it cannot be loaded. GUI thread
/// only.
[[nodiscard]] QPixmap loadThumbnail(const QString &path);
