#pragma once

#include <QFont>
#include <QStringList>

class QLabel;
class QWidget;

/// Shrinks the letters of a row of captions, all alike, until each caption fits its widget: first in width,
/// to 70 per cent at least, then in size, to 8 pixels at least.
///
/// The forms fix the sizes of the widgets, but the platform chooses the font. Call again after a text has
/// changed. A font size set by a style sheet or by rich text stays.
void fitRow(const QList<QWidget *> &captions);

/// Returns the letter width, in per cent of that of \a font, at which each of \a texts is at most \a width
/// pixels wide; at least 70.
[[nodiscard]] int stretchToFit(const QStringList &texts, QFont font, int width);

/// Fits the rich text of \a label like a row of one caption. If the text is taller than the label, moves it
/// up by at most the space above the letters of the first line, and shrinks it further if that is not enough.
void fitTitle(QLabel *label);
