#pragma once

class QPushButton;

/// Gives a category button the look of the selected one, or takes it away.
void setShownAsSelected(QPushButton *button, bool selected);
