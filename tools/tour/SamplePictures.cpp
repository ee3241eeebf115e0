#include "tools/tour/SamplePictures.h"

#include <QBuffer>
#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>

#include <numbers>

namespace {

constexpr QSize pictureSize(640, 480);

/// An outline of hills around \a height, as wide as the picture, closed along \a base.
QPainterPath hills(QRandomGenerator &random, int height, int roughness, int base)
{
    QPainterPath path(QPointF(0, base));
    for (int x = 0; x <= pictureSize.width() + 80; x += 80)
        path.lineTo(x, height - random.bounded(roughness));
    path.lineTo(pictureSize.width() + 80, base);
    path.closeSubpath();
    return path;
}

QLinearGradient fromTopToBottom(const QColor &top, const QColor &bottom, int height)
{
    QLinearGradient gradient(0, 0, 0, height);
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    return gradient;
}

} // namespace

QImage paintLake(quint32 seed)
{
    QRandomGenerator random(seed);
    const int shore = 300;
    QImage image(pictureSize, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);

    const int hour = random.bounded(360);
    painter.fillRect(image.rect(),
        fromTopToBottom(QColor::fromHsv(hour, 120, 220), QColor::fromHsv((hour + 40) % 360, 60, 255), shore));
    painter.setBrush(QColor(255, 244, 200));
    painter.drawEllipse(QPoint(80 + random.bounded(480), 60 + random.bounded(100)), 34, 34);
    painter.setBrush(QColor::fromHsv((hour + 200) % 360, 70, 150));
    painter.drawPath(hills(random, 220, 130, shore));
    painter.setBrush(QColor::fromHsv((hour + 210) % 360, 90, 95));
    painter.drawPath(hills(random, 270, 70, shore));

    const QImage reflection = image.copy(0, 0, pictureSize.width(), shore).mirrored();
    painter.drawImage(0, shore, reflection);
    painter.fillRect(0, shore, pictureSize.width(), pictureSize.height() - shore, QColor(20, 60, 110, 90));
    painter.setPen(QPen(QColor(255, 255, 255, 60), 2));
    for (int i = 0; i < 40; ++i) {
        const QPoint start(random.bounded(pictureSize.width()), shore + 8 + random.bounded(170));
        painter.drawLine(start, start + QPoint(20 + random.bounded(60), 0));
    }
    return image;
}

QImage paintCityAtNight(quint32 seed)
{
    QRandomGenerator random(seed);
    QImage image(pictureSize, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(image.rect(),
        fromTopToBottom(QColor(14, 18, 52), QColor::fromHsv(random.bounded(360), 140, 150), 480));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(240, 240, 220));
    painter.drawEllipse(QPoint(60 + random.bounded(520), 80), 26, 26);

    for (int x = 0; x < pictureSize.width(); x += 64) {
        const QRect house(x + 2, 140 + random.bounded(200), 60, 400);
        painter.fillRect(house, QColor(22, 24, 40));
        for (int y = house.top() + 12; y < pictureSize.height(); y += 22) {
            for (int column = 0; column < 3; ++column) {
                if (random.bounded(3) > 0)
                    painter.fillRect(house.left() + 8 + column * 17, y, 10, 12, QColor(255, 214, 120));
            }
        }
    }
    return image;
}

QImage paintFlower(quint32 seed)
{
    QRandomGenerator random(seed);
    QImage image(pictureSize, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const int green = 90 + random.bounded(50);
    painter.fillRect(image.rect(),
        fromTopToBottom(QColor::fromHsv(green, 60, 240), QColor::fromHsv(green, 140, 120), 480));
    painter.setPen(Qt::NoPen);
    painter.translate(320, 240);

    const int petals = 5 + random.bounded(8);
    const QColor colour = QColor::fromHsv(random.bounded(360), 150, 245);
    for (int i = 0; i < petals; ++i) {
        painter.setBrush(i % 2 == 0 ? colour : colour.darker(112));
        painter.drawEllipse(QPoint(0, -115), 230 / petals + 12, 105);
        painter.rotate(360.0 / petals);
    }
    painter.setBrush(QColor(255, 214, 70));
    painter.drawEllipse(QPoint(0, 0), 46, 46);
    return image;
}

QByteArray encode(const QImage &image, const char *format)
{
    QByteArray content;
    QBuffer buffer(&content);
    image.save(&buffer, format, 88);
    return content;
}
