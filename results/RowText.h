#pragma once

#include <QFontMetrics>
#include <QString>
#include <QStringList>

/// Texts of the results tree, shortened to a width in pixels.
namespace RowText {

/// Returns a group's title with its file name shortened in the middle; size and number of files stay whole.
[[nodiscard]] QString elidedTitle(const QString &title, const QFontMetrics &metrics, int width);

/// Returns a path shortened in the middle. If the result could also stand for one of \a others, shortens the
/// path at its start instead, so that the first difference is visible.
[[nodiscard]] QString elidedPath(
    const QString &path, const QStringList &others, const QFontMetrics &metrics, int width);

} // namespace RowText
