#include "app/PathToolTip.h"

#include <QTextDocument>

namespace {

constexpr qsizetype lineLength = 100; // characters; a line fits on a screen of 1024 pixels

} // namespace

QString pathToolTip(const QString &path)
{
    QString tip;
    qsizetype start = 0;
    while (path.size() - start > lineLength) {
        const qsizetype separator = path.lastIndexOf(u'/', start + lineLength - 1);
        qsizetype end = separator > start ? separator + 1 : start + lineLength;
        if (path.at(end).isLowSurrogate())
            --end;
        tip += path.sliced(start, end - start) + u'\n';
        start = end;
    }
    tip += path.sliced(start);
    // A tool tip would interpret a name that looks like markup.
    return Qt::mightBeRichText(tip) ? Qt::convertFromPlainText(tip, Qt::WhiteSpaceNormal) : tip;
}
