#include "cli/TimeText.h"

#include <QDateTime>

#include <algorithm>

QByteArray timeText(qint64 sinceEpoch)
{
    static const qint64 earliest = QDateTime(QDate(1, 1, 1), QTime(0, 0), Qt::UTC).toMSecsSinceEpoch();
    static const qint64 latest =
        QDateTime(QDate(9999, 12, 31), QTime(23, 59, 59, 999), Qt::UTC).toMSecsSinceEpoch();
    return QDateTime::fromMSecsSinceEpoch(std::clamp(sinceEpoch, earliest, latest), Qt::UTC)
        .toString(Qt::ISODateWithMs)
        .toLatin1();
}
