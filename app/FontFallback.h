#pragma once

/// Names free fonts of the same letter widths for "Segoe UI", the family in the category buttons' style
/// sheet.
///
/// Qt uses the first of them that is installed. Does nothing where "Segoe UI" is installed.
void addFontFallback();
