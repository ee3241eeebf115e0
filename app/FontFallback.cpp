#include "app/FontFallback.h"

#include <QFont>
#include <QFontDatabase>
#include <QStringList>

using Qt::StringLiterals::operator""_s;

void addFontFallback()
{
    const QString family = u"Segoe UI"_s;
    if (!QFontDatabase::hasFamily(family))
        QFont::insertSubstitutions(family, {u"Open Sans"_s, u"Noto Sans"_s});
}
