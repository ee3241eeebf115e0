#pragma once

#include <QColor>
#include <QList>
#include <QString>

class QWidget;

/// A visible text of a window and its contrast.
struct ShownText
{
    QString name; ///< object name of its widget, or the text if the widget has no name
    QColor color;
    QColor background; ///< the background colour with the least contrast
    double contrast;   ///< contrast ratio of WCAG 2.1, 1 to 21
    bool enabled;
};

/// Paints \a window and measures every text of its visible labels, buttons, fields, rows and menu entries.
[[nodiscard]] QList<ShownText> shownTexts(QWidget &window);

/// The contrast ratio of WCAG 2.1 between two colours.
[[nodiscard]] double contrastRatio(const QColor &color, const QColor &other);
