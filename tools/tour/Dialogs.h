#pragma once

#include <functional>

class QToolButton;
class QWidget;

/// Runs \a action, which opens a modal dialog. Calls \a look when the dialog is on the screen, then closes
/// it.
void lookAtDialog(const std::function<void()> &action, const std::function<void(QWidget *)> &look);

/// Opens the menu of \a button, calls \a look and closes the menu.
void lookAtMenu(QToolButton *button, const std::function<void()> &look);

/// Runs the event loop until changes are on the screen.
void settle();
