#pragma once

#include <QByteArray>
#include <QImage>

/// Pictures that differ with \a seed and are the same for the same one.
[[nodiscard]] QImage paintLake(quint32 seed);
[[nodiscard]] QImage paintCityAtNight(quint32 seed);
[[nodiscard]] QImage paintFlower(quint32 seed);

/// The picture as the content of a file; \a format as "png", "jpg" or "bmp".
[[nodiscard]] QByteArray encode(const QImage &image, const char *format);
