#pragma once

#include <QList>

class MainWindow;
struct Volume;

// Private functions of the window that tests call with their own arguments.

/// Callable from any thread.
void hideLoadingOverlay(MainWindow &window);

/// Fills the folder list of the start page as if \a volumes were mounted.
void listVolumes(MainWindow &window, const QList<Volume> &volumes);
