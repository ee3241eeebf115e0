#pragma once

#include <QPalette>

/// The program's colours: light, every role in every colour group, independent of the desktop's.
[[nodiscard]] QPalette lightPalette();

/// Makes lightPalette() the application's palette and that of the tool tips.
///
/// The style sheets name light backgrounds only. With the palette of a dark desktop, texts would be white on
/// white. The application's palette is the one that reaches message boxes, menus and dialogs: a widget with a
/// style sheet does not pass its own palette on to its children.
void applyLightPalette();
