#pragma once

#include <QColor>
#include <QList>
#include <QString>

class QWidget;

/// A text that a window shows, and how well it stands out.
struct ShownText
{
    QString name; ///< object name of its widget, or the text itself where there is none
    QColor color;
    QColor background; ///< the one behind it from which it stands out least
    double contrast;   ///< contrast ratio of WCAG 2.1, 1 to 21
    bool enabled;
};

/// Paints \a window and measures every text of its visible labels, buttons, fields, rows and menu entries.
[[nodiscard]] QList<ShownText> shownTexts(QWidget &window);

/// The contrast ratio of WCAG 2.1 between two colours.
[[nodiscard]] double contrastRatio(const QColor &color, const QColor &other);
