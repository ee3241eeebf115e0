#pragma once

#include <QDateTime>
#include <QList>
#include <QSet>
#include <QString>

/// Two or more files with equal fingerprint.
///
/// The first file, not the kept one, gives the group its name, size, time and category.
struct DuplicateGroup
{
    /// Name of the first file, without its folder.
    QString fileName;
    /// Full paths of all copies. A path stands here twice when it was collected twice.
    QList<QString> files;
    /// Bytes of one copy.
    qint64 size = 0;
    QDateTime modified;
    /// Key of the first file's category, see categoryOf().
    QString category;
    /// Whether markedFiles holds any path. May lag behind for groups that no row shows.
    bool hasMarkedFiles = false;
    /// The paths marked for deletion.
    QSet<QString> markedFiles;
};

/// Position in \a files of the copy to keep: the one created first, judged by modification time where a file
/// has no creation time, and the earlier in the list where times are equal. A file that is gone is kept only
/// when all are. \a files must not be empty. Asks the file system once per file.
qsizetype indexOfKeptCopy(const QList<QString> &files);

/// Marks every path of the group but that of the copy to keep. The kept path stays unmarked everywhere, also
/// when it stands in the group twice; a group of fewer than two files gets no mark.
void markAllButKeptCopy(DuplicateGroup &group);

/// Replaces the marks of the group.
void setMarkedFiles(DuplicateGroup &group, const QSet<QString> &marked);
