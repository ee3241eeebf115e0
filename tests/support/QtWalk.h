#pragma once

#include <QDirIterator>
#include <QStringList>

/// The files below \a folder in the order of QDirIterator, which a walk must reproduce.
inline QStringList filesByQt(const QString &folder)
{
    QStringList files;
    QDirIterator walk(folder, QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (walk.hasNext())
        files.append(walk.next());
    return files;
}
