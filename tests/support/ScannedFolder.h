#pragma once

#include "tests/support/WindowDriver.h"

#include <QScopedPointer>
#include <QSet>
#include <QStringList>
#include <QTemporaryDir>

/// What a test of the results page starts from, to inherit: a folder of its own and a window that scans it.
class ScannedFolder
{
protected:
    /// Makes both anew: the folder is empty, the window shows its start page.
    void reset();

    [[nodiscard]] QString path(const QString &name) const;
    QStringList write(const QStringList &names, const QByteArray &content) const;
    [[nodiscard]] QSet<QString> filesOnDisk() const;
    [[nodiscard]] bool scan();

    [[nodiscard]] QTreeWidgetItem *group(int index) const;
    [[nodiscard]] int groups() const;

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<WindowDriver> m_driver;
};
