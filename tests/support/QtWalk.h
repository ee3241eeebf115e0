#pragma once

#include <QDirIterator>
#include <QStringList>

/// What Qt's own walk of \a folder yields, which is what a walk has to yield, in that order.
inline QStringList filesByQt(const QString &folder)
{
    QStringList files;
    QDirIterator walk(folder, QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (walk.hasNext())
        files.append(walk.next());
    return files;
}
