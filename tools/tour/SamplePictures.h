#pragma once

#include <QByteArray>
#include <QImage>

// The same seed gives the same picture.
[[nodiscard]] QImage paintLake(quint32 seed);
[[nodiscard]] QImage paintCityAtNight(quint32 seed);
[[nodiscard]] QImage paintFlower(quint32 seed);

/// The content of a picture file; \a format is "png", "jpg" or "bmp".
[[nodiscard]] QByteArray encode(const QImage &image, const char *format);
