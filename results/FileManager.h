#pragma once

#include <QString>

/// Opens the file with the desktop's default program for its type. Does not report failure.
void openFile(const QString &path);

/// Opens the folder of the file in the desktop's file manager and selects the file if the file manager
/// supports that.
///
/// Returns immediately. Does not report failure. GUI thread only.
void showInFolder(const QString &path);
