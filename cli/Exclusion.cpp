#include "cli/Exclusion.h"

#include <algorithm>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// Index of the "]" that ends the set at \a start; -1 if there is none. A "]" right at the beginning is a
/// member of the set.
qsizetype endOfSet(QStringView glob, qsizetype start)
{
    qsizetype first = start + 1;
    if (first < glob.size() && (glob[first] == u'!' || glob[first] == u'^'))
        ++first;
    return glob.indexOf(u']', first + 1);
}

QString setExpression(QStringView set)
{
    const bool outside = set.startsWith(u'!') || set.startsWith(u'^');
    QString expression = outside ? u"[^/"_s : u"["_s;
    for (const QChar character : outside ? set.sliced(1) : set) {
        if (u"\\[]^&~"_s.contains(character))
            expression += u'\\';
        expression += character;
    }
    return expression + u']';
}

/// The expression for the part of \a glob at \a position. Moves \a position to the next part.
QString nextPart(QStringView glob, qsizetype &position)
{
    const QChar character = glob[position++];
    if (character == u'*') {
        if (position < glob.size() && glob[position] == u'*') {
            ++position;
            return u".*"_s;
        }
        return u"[^/]*"_s;
    }
    if (character == u'?')
        return u"[^/]"_s;
    if (character == u'\\' && position < glob.size())
        return QRegularExpression::escape(glob.sliced(position++, 1));
    if (const qsizetype end = character == u'[' ? endOfSet(glob, position - 1) : -1; end >= 0) {
        const QStringView set = glob.sliced(position, end - position);
        position = end + 1;
        return setExpression(set);
    }
    return QRegularExpression::escape(QStringView(&character, 1));
}

} // namespace

QRegularExpression globExpression(const QString &glob)
{
    QString expression;
    for (qsizetype position = 0; position < glob.size();)
        expression += nextPart(glob, position);
    return QRegularExpression(
        QRegularExpression::anchoredPattern(expression), QRegularExpression::DotMatchesEverythingOption);
}

ExclusionRule exclusionRule(const QStringList &globs)
{
    if (globs.isEmpty())
        return {};
    QList<QRegularExpression> expressions;
    for (QString glob : globs) {
        // The rule gets the path of a folder without a slash at its end.
        while (glob.size() > 1 && glob.endsWith(u'/'))
            glob.chop(1);
        expressions.append(globExpression(glob));
        expressions.constLast().optimize();
    }
    return [expressions](QStringView name, QStringView pathBelowFolder) {
        return std::ranges::any_of(expressions, [&](const QRegularExpression &expression) {
            return expression.match(name).hasMatch() || expression.match(pathBelowFolder).hasMatch();
        });
    };
}
