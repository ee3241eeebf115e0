#include "cli/Messages.h"

#include <algorithm>
#include <cstdio>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

bool isControl(QChar character)
{
    const char16_t code = character.unicode();
    return code < 0x20 || (code >= 0x7f && code < 0xa0);
}

QString visibleControl(QChar control)
{
    switch (control.unicode()) {
    case u'\n':
        return u"\\n"_s;
    case u'\r':
        return u"\\r"_s;
    case u'\t':
        return u"\\t"_s;
    default:
        return u"\\x%1"_s.arg(control.unicode(), 2, 16, QChar(u'0'));
    }
}

} // namespace

QString withVisibleControls(QStringView text)
{
    QString visible;
    visible.reserve(text.size());
    for (const QChar character : text) {
        if (isControl(character))
            visible += visibleControl(character);
        else
            visible += character;
    }
    return visible;
}

void printLine(const QString &line)
{
    const QByteArray bytes = withVisibleControls(line).toUtf8() + '\n';
    // There is no other stream to report a failure of standard error.
    (void)std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
}

void printMessage(const QString &message)
{
    printLine(u"quillory-cli: "_s + message);
}
