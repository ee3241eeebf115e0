#include "cli/CommandLine.h"

using Qt::Literals::StringLiterals::operator""_s;

namespace {

constexpr qsizetype lineWidth = 79;
constexpr qsizetype meaningColumn = 24;

/// \a text in lines of at most lineWidth columns, each indented by \a indent blanks. Keeps the line breaks of
/// the text.
QString wrapped(const QString &text, qsizetype indent)
{
    const QString margin(indent, u' ');
    QString result;
    for (const QString &paragraph : text.split(u'\n')) {
        QString line = margin;
        for (const QString &word : paragraph.split(u' ')) {
            if (line.size() > indent && line.size() + 1 + word.size() > lineWidth) {
                result += line + u'\n';
                line = margin;
            }
            line += line.size() > indent ? u' ' + word : word;
        }
        result += (line.size() > indent ? line : QString()) + u'\n';
    }
    return result;
}

QString optionHelp(const OptionDescription &option)
{
    QString head = u"  --"_s + option.name;
    if (!option.valueName.isEmpty())
        head += u' ' + option.valueName;
    const QString meaning = wrapped(option.meaning, meaningColumn);
    if (head.size() + 2 > meaningColumn)
        return head + u'\n' + meaning;
    return head.leftJustified(meaningColumn) + meaning.sliced(meaningColumn);
}

} // namespace

QString helpText(const CommandDescription &command)
{
    QString text = u"Usage: quillory-cli %1 [OPTION]... %2\n\n"_s.arg(command.name, command.operands);
    text += wrapped(command.purpose, 0) + u"\nOptions:\n"_s;
    for (const OptionDescription &option : command.options)
        text += optionHelp(option);
    text += optionHelp({.name = u"help"_s, .valueName = {}, .meaning = u"prints this text"_s});
    return text + u'\n' + wrapped(command.notes, 0);
}
