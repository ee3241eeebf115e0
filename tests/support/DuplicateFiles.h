#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>
#include <QStringList>

/// Writes \a content to each of \a names below \a folder; returns the paths, in the order of \a names.
QStringList writeCopies(const QString &folder, const QStringList &names, const QByteArray &content);

/// Writes \a count pairs of copies to \a folder, named "first-0.txt" and "second-0.txt" upwards for the
/// suffix "txt". Different pairs have different contents.
void writePairs(const QString &folder, int count, const QString &suffix);

/// The paths of all files in \a folder and its subfolders.
QSet<QString> filesBelow(const QString &folder);

QSet<QString> toSet(const QStringList &list);
