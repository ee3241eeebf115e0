#pragma once

#include <QString>

/// Opens the file with the program that the desktop has for its type. Nothing is reported if that fails.
void openFile(const QString &path);

/// Shows the folder of the file in the desktop's file manager, with the file selected where the file manager
/// can be asked to.
///
/// Returns at once. GUI thread only.
void showInFolder(const QString &path);
