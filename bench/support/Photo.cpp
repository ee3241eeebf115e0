#include "bench/support/Photo.h"

#include <QBuffer>
#include <QImage>
#include <QRandomGenerator>

QByteArray makePhoto()
{
    QImage image(4000, 3000, QImage::Format_RGB32);
    QRandomGenerator random(1);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int noise = random.bounded(24);
            image.setPixel(x, y, qRgb(x / 20 + noise, y / 15 + noise, (x + y) / 40 + noise));
        }
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPG", 90);
    return bytes;
}
