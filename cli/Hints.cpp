#include "cli/Hints.h"

#include <algorithm>
#include <limits>
#include <vector>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// Number of letters to remove, add, change or swap with a neighbour to turn \a from into \a to.
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

/// Largest edit distance at which a word is near: two in a word of six letters.
qsizetype largestDistance(const QString &word)
{
    return (word.size() + 2) / 4 + (word.size() > 2 ? 0 : -1);
}

/// Whether \a candidate begins with \a word and \a word is long enough to be meant.
bool isBeginning(const QString &word, const QString &candidate)
{
    constexpr qsizetype fewestLetters = 2;
    return word.size() - word.count(u'-') >= fewestLetters && candidate.startsWith(word);
}

} // namespace

std::optional<QString> nearestWord(const QString &word, const QStringList &words)
{
    std::optional<QString> nearest;
    qsizetype nearestDistance = std::numeric_limits<qsizetype>::max();
    for (const QString &candidate : words) {
        const bool begins = isBeginning(word, candidate);
        const qsizetype distance = begins ? 1 : editDistance(word.toLower(), candidate);
        if (distance < nearestDistance && (begins || distance <= largestDistance(word))) {
            nearest = candidate;
            nearestDistance = distance;
        }
    }
    return nearest;
}

QString didYouMean(const QString &word, const QStringList &words)
{
    const auto nearest = nearestWord(word, words);
    return nearest ? u" (did you mean %1?)"_s.arg(*nearest) : QString();
}
