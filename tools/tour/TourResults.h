#pragma once

#include <QSet>
#include <QString>

class WindowDriver;

/// Scrolls until all groups, or \a atMost of them, have rows; then back to the top.
void loadGroups(WindowDriver &driver, int atMost);

/// Expands and shows the first group of three or more pictures; if there is none, the first group.
void expandOneGroup(WindowDriver &driver);

/// Prints the first \a atMost groups of the tree with their files.
void printGroups(WindowDriver &driver, int atMost);

/// The paths of all files below \a folder.
[[nodiscard]] QSet<QString> filesBelow(const QString &folder);
