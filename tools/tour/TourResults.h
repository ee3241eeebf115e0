#pragma once

#include <QSet>
#include <QString>

class WindowDriver;

/// Scrolls until the rows of every group are there, or of \a atMost groups; then back to the top.
void loadGroups(WindowDriver &driver, int atMost);

/// Expands the first group with a picture, or else the first group, and puts it on the screen.
void expandOneGroup(WindowDriver &driver);

/// Prints the groups of the tree with their files, and the totals.
void printGroups(WindowDriver &driver, int atMost);

/// The paths of all files below \a folder.
[[nodiscard]] QSet<QString> filesBelow(const QString &folder);
