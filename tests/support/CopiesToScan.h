#pragma once

#include <QScopedPointer>
#include <QStringList>
#include <QTemporaryDir>

/// Base of test classes of the scan page: a temporary folder to scan.
class CopiesToScan
{
protected:
    /// Creates a folder with three copies: "a.txt", "b.txt" and "c.txt".
    void reset();

    QScopedPointer<QTemporaryDir> m_folder;
    /// The paths of the copies.
    QStringList m_paths;
};
