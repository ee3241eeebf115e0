#pragma once

#include "tests/support/WindowDriver.h"

#include <QScopedPointer>
#include <QSet>
#include <QStringList>
#include <QTemporaryDir>

/// Base of test classes of the results page: a temporary folder and a window that scans it.
class ScannedFolder
{
protected:
    /// Creates an empty folder and a window that shows its start page.
    void reset();

    [[nodiscard]] QString path(const QString &name) const;
    QStringList write(const QStringList &names, const QByteArray &content) const;
    [[nodiscard]] QSet<QString> filesOnDisk() const;
    /// Scans the folder; false on timeout.
    [[nodiscard]] bool scan();

    [[nodiscard]] QTreeWidgetItem *group(int index) const;
    /// Number of loaded groups.
    [[nodiscard]] int groups() const;

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<WindowDriver> m_driver;
};
