// Window layer: a text of the scan page.

#include "scan/ElapsedTime.h"

#include <QTime>

using Qt::Literals::StringLiterals::operator""_s;

QString elapsedTimeText(qint64 milliseconds)
{
    const auto seconds = static_cast<int>(milliseconds / 1000);
    return QTime(0, 0, 0).addSecs(seconds).toString(u"hh:mm:ss"_s);
}
