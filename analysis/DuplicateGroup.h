#pragma once

#include <QDateTime>
#include <QSet>
#include <QString>
#include <QStringList>

/// Two or more files with equal fingerprints.
///
/// Kept deliberately: name, size, time and category come from the first file, not from the kept file.
struct DuplicateGroup
{
    /// Name of the first file, without its folder.
    QString fileName;
    /// Full paths of all copies. Contains a path twice if it was collected twice.
    QStringList files;
    /// Size of the first file in bytes.
    qint64 size = 0;
    QDateTime modified;
    /// Category key of the first file, see categoryOf().
    QString category;
    /// Whether markedFiles is not empty. May be out of date for groups without a row.
    bool hasMarkedFiles = false;
    /// The paths marked for deletion.
    QSet<QString> markedFiles;
};

/// Index in \a files of the file to keep: the one with the earliest creationTime(), the first of these if
/// several are equal. Chooses a file that is gone only if all are gone. \a files must not be empty. Reads the
/// times from the file system.
[[nodiscard]] qsizetype indexOfKeptCopy(const QStringList &files);

/// Marks every path of \a group except that of the kept file. The path of the kept file is never marked, even
/// if the group contains it twice. A group of fewer than two files gets no marks.
void markAllButKeptCopy(DuplicateGroup &group);

/// Replaces the marks of \a group.
void setMarkedFiles(DuplicateGroup &group, const QSet<QString> &marked);
