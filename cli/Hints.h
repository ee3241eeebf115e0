#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The word of \a words that is nearest to \a word, which a user typed. A word is near if it begins with
/// \a word, or if few letters are missing, added, changed or swapped with a neighbour.
[[nodiscard]] std::optional<QString> nearestWord(const QString &word, const QStringList &words);

/// " (did you mean WORD?)"; empty if no word is near.
[[nodiscard]] QString didYouMean(const QString &word, const QStringList &words);
