#include "results/Thumbnail.h"

#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

namespace {

constexpr QSize thumbnailSize(32, 32);

/// Multiple of the thumbnail's size at which formats that support it are decoded: a larger factor gives
/// smoother edges, a smaller one decodes faster.
constexpr int decodingFactor = 4;

/// Larger pictures get no thumbnail: a progressive JPEG needs up to six bytes of memory per pixel, however
/// small the file is.
constexpr qint64 maxPixels = 256LL * 1024 * 1024;

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
    // Opening a pipe would block until its other end is opened.
    if (!QFileInfo(path).isFile())
        return {};
    QImageReader reader(path);
    const QSize size = reader.size();
    if (size.isValid() && pixelCount(size) > maxPixels)
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
