#pragma once

/// Registers free fonts with the same letter widths as substitutes for "Segoe UI", the font of the category
/// buttons.
///
/// Qt uses the first substitute that is installed. Does nothing if "Segoe UI" itself is installed.
void addFontFallback();
