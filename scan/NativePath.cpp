#include "scan/NativePath.h"

#include <QDir>

using Qt::StringLiterals::operator""_s;

std::wstring nativePath(const QString &path)
{
    const QString absolute = QDir::cleanPath(QDir::current().absoluteFilePath(path));
    const QString native = QDir::toNativeSeparators(absolute);
    if (native.startsWith(u"\\\\?\\"_s))
        return native.toStdWString();
    if (native.startsWith(u"\\\\"_s))
        return (u"\\\\?\\UNC"_s + native.sliced(1)).toStdWString();
    return (u"\\\\?\\"_s + native).toStdWString();
}
