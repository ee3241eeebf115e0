#pragma once

class QLabel;
class QWidget;

/// Makes the letters of a caption narrower when the platform's font makes its text wider than its place.
///
/// The places have a fixed size; there is no font that every platform has. Call it again after a new text.
void fitCaption(QWidget *caption);

/// Makes the rich text of a label smaller when the platform's font makes its lines wider than its place, and
/// moves it up when they are higher, so that the last one is not cut off: there is room above the letters of
/// the first.
void fitTitle(QLabel *label);
