#pragma once

class QPushButton;

/// Makes the style sheet draw a category button as selected or not.
void setShownAsSelected(QPushButton *button, bool shown);
