#include "results/Thumbnail.h"

#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

namespace {

constexpr QSize thumbnailSize(32, 32);

/// A format that can decode at a reduced size does so at this multiple of the thumbnail's, for smooth edges.
constexpr int decodingFactor = 4;

/// What a picture may claim to hold. A progressive JPEG takes up to six bytes of memory per pixel before the
/// first one is decoded, however short the file is.
constexpr qint64 mostPixels = 256LL * 1024 * 1024;

qint64 pixelCount(const QSize &size)
{
    return qint64(size.width()) * size.height();
}

QSize scaledToThumbnail(const QSize &size)
{
    return size.scaled(thumbnailSize, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
}

} // namespace

QPixmap loadThumbnail(const QString &path)
{
    // A pipe that has come in the place of the picture would keep the window waiting for its other end for
    // ever.
    if (!QFileInfo(path).isFile())
        return {};
    QImageReader reader(path);
    const QSize size = reader.size();
    if (size.isValid() && pixelCount(size) > mostPixels)
        return {};
    const QSize decoded = scaledToThumbnail(size) * decodingFactor;
    const bool reduce = size.isValid() && reader.supportsOption(QImageIOHandler::ScaledSize) &&
                        size.width() > decoded.width() && size.height() > decoded.height();
    if (reduce)
        reader.setScaledSize(decoded);
    const QImage image = reader.read();
    if (image.isNull())
        return {};
    const QSize target = scaledToThumbnail(reduce ? size : image.size());
    return QPixmap::fromImage(image.scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}
