#pragma once

#include <QFontMetrics>
#include <QString>
#include <QStringList>

/// Texts of the results tree, shortened to the \a width in pixels that a row has for them.
namespace RowText {

/// A group's title; only its file name is shortened, in the middle. Size and number of files stay.
[[nodiscard]] QString elidedTitle(const QString &title, const QFontMetrics &metrics, int width);

/// A file's path, shortened in the middle. If that makes it look like one of \a others, it is shortened at
/// its start instead, up to where the two differ.
[[nodiscard]] QString elidedPath(
    const QString &path, const QStringList &others, const QFontMetrics &metrics, int width);

} // namespace RowText
