#include "results/RowText.h"

#include <algorithm>
#include <optional>

using Qt::StringLiterals::operator""_L1;

namespace {

constexpr QChar ellipsis(0x2026);
constexpr qsizetype context = 20; // characters shown before a difference inside a long name

qsizetype firstDifference(const QString &text, const QString &other)
{
    return std::ranges::mismatch(text, other).in1 - text.cbegin();
}

/// Returns the first position at which \a path differs from any of \a others that the shortened path \a
/// elided could also stand for; nothing if there is no such path.
std::optional<qsizetype> hiddenDifference(
    const QString &path, const QString &elided, const QStringList &others)
{
    const qsizetype gap = firstDifference(elided, path);
    const QStringView head = QStringView(elided).first(gap);
    QStringView tail = QStringView(elided).sliced(std::min(gap + 1, elided.size()));
    // The end of a cut folder name does not identify the folder: compare from the next separator on.
    tail = tail.sliced(std::max<qsizetype>(tail.indexOf(u'/'), 0));
    std::optional<qsizetype> first;
    for (const QString &other : others) {
        if (other == path || !other.startsWith(head) || !other.endsWith(tail))
            continue;
        const qsizetype difference = firstDifference(path, other);
        first = std::min(first.value_or(difference), difference);
    }
    return first;
}

} // namespace

QString RowText::elidedTitle(const QString &title, const QFontMetrics &metrics, int width)
{
    if (metrics.horizontalAdvance(title) <= width)
        return title;
    const qsizetype end = title.lastIndexOf("    "_L1);
    const QString figures = title.sliced(std::max<qsizetype>(end, 0));
    const int left = width - metrics.horizontalAdvance(figures);
    return metrics.elidedText(title.chopped(figures.size()), Qt::ElideMiddle, left) + figures;
}

QString RowText::elidedPath(
    const QString &path, const QStringList &others, const QFontMetrics &metrics, int width)
{
    const QString elided = metrics.elidedText(path, Qt::ElideMiddle, width);
    if (elided == path)
        return path;
    const std::optional<qsizetype> difference = hiddenDifference(path, elided, others);
    if (!difference)
        return elided;
    const qsizetype start = std::max(path.lastIndexOf(u'/', *difference), *difference - context);
    const int left = width - metrics.horizontalAdvance(ellipsis);
    return ellipsis + metrics.elidedText(path.sliced(start), Qt::ElideMiddle, left);
}
