#pragma once

#include <QFont>
#include <QStringList>

class QLabel;
class QWidget;

/// Makes the letters of a row of captions narrower, all by the same amount, until each fits its widget; where
/// that is not enough, smaller.
///
/// The forms fix the widgets' sizes, but the font is the platform's. Call it again after a text has changed.
/// A letter size that a style sheet or rich text names stays.
void fitRow(const QList<QWidget *> &captions);

/// The width of letters, in per cent of that of \a font, with which each of \a texts is at most \a width
/// pixels wide; not less than 70.
[[nodiscard]] int stretchToFit(const QStringList &texts, QFont font, int width);

/// Fits the rich text of a label like a row of one caption. If its lines are higher than the label, moves
/// them up, so that the last one is not cut off: there is room above the letters of the first.
void fitTitle(QLabel *label);
