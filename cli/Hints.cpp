#include "cli/Hints.h"

#include <algorithm>
#include <limits>
#include <vector>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// Letters to leave out, add, change or swap with their neighbour to make one of the other.
qsizetype editDistance(QStringView from, QStringView to)
{
    const auto width = static_cast<std::size_t>(to.size()) + 1;
    std::vector<qsizetype> beforeLast(width);
    std::vector<qsizetype> last(width);
    std::vector<qsizetype> current(width);
    for (std::size_t column = 0; column < width; ++column)
        last[column] = static_cast<qsizetype>(column);
    for (qsizetype i = 1; i <= from.size(); ++i) {
        current[0] = i;
        for (qsizetype j = 1; j <= to.size(); ++j) {
            const auto column = static_cast<std::size_t>(j);
            const bool equal = from[i - 1] == to[j - 1];
            current[column] =
                std::min({last[column] + 1, current[column - 1] + 1, last[column - 1] + (equal ? 0 : 1)});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1])
                current[column] = std::min(current[column], beforeLast[column - 2] + 1);
        }
        beforeLast.swap(last);
        last.swap(current);
    }
    return last.back();
}

/// How far a word may be from what was typed: two slips in a word of six letters.
qsizetype farthest(const QString &word)
{
    return (word.size() + 2) / 4 + (word.size() > 2 ? 0 : -1);
}

/// Whether enough of \a candidate was typed to tell it from others.
bool isBeginning(const QString &word, const QString &candidate)
{
    constexpr qsizetype fewestLetters = 2;
    return word.size() - word.count(u'-') >= fewestLetters && candidate.startsWith(word);
}

} // namespace

QString nearestWord(const QString &word, const QStringList &words)
{
    QString nearest;
    qsizetype nearestDistance = std::numeric_limits<qsizetype>::max();
    for (const QString &candidate : words) {
        const bool begins = isBeginning(word, candidate);
        const qsizetype distance = begins ? 1 : editDistance(word.toLower(), candidate);
        if (distance < nearestDistance && (begins || distance <= farthest(word))) {
            nearest = candidate;
            nearestDistance = distance;
        }
    }
    return nearest;
}

QString didYouMean(const QString &word, const QStringList &words)
{
    const QString nearest = nearestWord(word, words);
    return nearest.isEmpty() ? QString() : u" (did you mean %1?)"_s.arg(nearest);
}
