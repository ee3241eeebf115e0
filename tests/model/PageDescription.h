#pragma once

#include "tests/support/WindowDriver.h"

#include <QList>
#include <QString>
#include <QStringList>

/// The key and the object name of a category button.
struct CategoryButton
{
    QString key;
    const char *name;
};
[[nodiscard]] QList<CategoryButton> categoryButtonsByKey();

// The lines that describe the results page: the rows of the tree, then its state.

[[nodiscard]] QString groupLine(const QString &title, Qt::CheckState state, const QString &loadedUnder);
[[nodiscard]] QString fileLine(const QString &path, const QString &size, const QString &time, bool checked);
[[nodiscard]] QString stateLine(
    bool actionsEnabled, const QString &selectedKey, const QString &totals, const QString &status);

/// Describes the results page of the real window.
[[nodiscard]] QStringList describe(WindowDriver &driver);
