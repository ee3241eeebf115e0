#pragma once

class QPushButton;

/// Draws a category button as the selected one, or as any other.
void setShownAsSelected(QPushButton *button, bool shown);
