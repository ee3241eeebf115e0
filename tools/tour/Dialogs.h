#pragma once

#include <functional>

class QToolButton;
class QWidget;

/// Runs \a action, which opens a modal dialog; when that has been on the screen for a moment, \a look sees it
/// and it is closed.
void lookAtDialog(const std::function<void()> &action, const std::function<void(QWidget *)> &look);

/// Opens the menu of \a button, lets \a look see it and closes it without choosing anything.
void lookAtMenu(QToolButton *button, const std::function<void()> &look);

/// Lets the event loop run until what has changed is on the screen.
void settle();
