#include "cli/SizeText.h"

#include <QStringList>

using Qt::Literals::StringLiterals::operator""_s;

QString sizeText(qint64 bytes)
{
    constexpr double step = 1024;
    // Larger values would be rounded to 1024.00.
    constexpr double nextUnit = 1023.995;
    const QStringList units{u"KB"_s, u"MB"_s, u"GB"_s, u"TB"_s};
    if (bytes < qint64(step))
        return u"%1 B"_s.arg(bytes);
    double value = static_cast<double>(bytes) / step;
    qsizetype unit = 0;
    while (value >= nextUnit && unit + 1 < units.size()) {
        value /= step;
        ++unit;
    }
    return QString::number(value, 'f', 2) + u' ' + units[unit];
}

QString counted(qint64 count, const QString &noun)
{
    return QString::number(count) + u' ' + noun + (count == 1 ? QString() : u"s"_s);
}
