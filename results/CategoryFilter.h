#pragma once

class QPushButton;

/// Draws a category button as the selected one if \a shown, otherwise like the others.
void setShownAsSelected(QPushButton *button, bool shown);
