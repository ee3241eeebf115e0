#include "results/Thumbnail.h"

#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

namespace {

constexpr QSize thumbnailSize(32, 32);

/// Formats that can decode at a reduced size use this multiple of the thumbnail's size: smooth edges at
/// little cost.
constexpr int decodingFactor = 4;

/// Pixels that a picture may claim to have. A progressive JPEG takes up to six bytes of memory per pixel
/// before the first one is decoded, however short the file is.
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
    // If a pipe has replaced the picture, opening it would block until its other end is opened.
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
