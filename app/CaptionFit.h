#pragma once

class QWidget;

/// Makes the letters of a caption narrower when the platform's font makes its text wider than its place.
///
/// The places have a fixed size; there is no font that every platform has. Call it again after a new text.
void fitCaption(QWidget *caption);
