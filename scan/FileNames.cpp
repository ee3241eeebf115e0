#include "scan/FileNames.h"

#include <QStringDecoder>
#include <QUtf8StringView>

#include <algorithm>
#include <array>

namespace {

constexpr std::array<QStringView, 6> devices{u"CON", u"PRN", u"AUX", u"NUL", u"CONIN$", u"CONOUT$"};
/// Device names that end with one of portDigits.
constexpr std::array<QStringView, 2> ports{u"COM", u"LPT"};
constexpr QStringView portDigits = u"0123456789¹²³";

/// Whether Windows treats \a name as a device. Windows ignores a suffix and the blanks before it.
bool isDeviceName(QStringView name)
{
    const QStringView base = name.left(name.indexOf(u'.')).trimmed();
    const auto isBase = [base](QStringView device) { return base.compare(device, Qt::CaseInsensitive) == 0; };
    const auto isPort = [base](QStringView port) {
        return base.size() == port.size() + 1 && base.startsWith(port, Qt::CaseInsensitive) &&
               portDigits.contains(base.back());
    };
    return std::ranges::any_of(devices, isBase) || std::ranges::any_of(ports, isPort);
}

} // namespace

bool isDecodable(QByteArrayView name)
{
    return QUtf8StringView(name.data(), name.size()).isValidUtf8();
}

QString decodedPath(const QString &folderWithSlash, QByteArrayView name)
{
    Q_ASSERT(isDecodable(name));
    // A U+FEFF at the start belongs to the name; QString::fromUtf8() would drop it as a byte order mark.
    QStringDecoder decoder(
        QStringDecoder::Utf8, QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    QString path(folderWithSlash.size() + decoder.requiredSpace(name.size()), Qt::Uninitialized);
    QChar *const start = std::ranges::copy(folderWithSlash, path.data()).out;
    path.truncate(decoder.appendToBuffer(start, name) - path.constData());
    return path;
}

bool keepsItsNameOnWindows(QStringView name)
{
    const bool hasSeparator =
        std::ranges::any_of(name, [](QChar c) { return c == u':' || c == u'/' || c == u'\\'; });
    return !name.isEmpty() && !name.endsWith(u'.') && !name.endsWith(u' ') && !hasSeparator &&
           !isDeviceName(name) && name.isValidUtf16();
}
