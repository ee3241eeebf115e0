#pragma once

#include <QString>
#include <QStringList>

/// The word of \a words that a user who typed \a word most likely meant; empty when none is near. A word is
/// near when \a word begins it, or when few letters were left out, added, changed or swapped with their
/// neighbour.
[[nodiscard]] QString nearestWord(const QString &word, const QStringList &words);

/// " (did you mean WORD?)", or nothing when no word is near.
[[nodiscard]] QString didYouMean(const QString &word, const QStringList &words);
