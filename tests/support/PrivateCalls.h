#pragma once

#include <QList>

class MainWindow;
struct Volume;

// Functions of the window that no control calls with what a test has to hand in.

/// From any thread.
void hideLoadingOverlay(MainWindow &window);

/// Fills the start page's folder list as if the system had mounted \a volumes.
void listVolumes(MainWindow &window, const QList<Volume> &volumes);
