#pragma once

#include <QPalette>

/// Returns the program's light palette, which sets every role in every colour group.
[[nodiscard]] QPalette lightPalette();

/// Sets lightPalette() for the application and for tool tips.
///
/// The style sheets set light backgrounds only: the palette of a dark desktop would make texts white on
/// white. A palette of the window alone would not reach message boxes, menus and dialogs, because a widget
/// with a style sheet does not pass its palette on to its children.
void applyLightPalette();
