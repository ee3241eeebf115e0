#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Writes \a content to \a path, creating the folders on the way; aborts the program when that fails.
void writeFile(const QString &path, const QByteArray &content);

/// Makes the file's modification time \a seconds after 2020-01-01 00:00:00 UTC.
void setModificationTime(const QString &path, qint64 seconds);

/// Writes the files one by one in the given order, each with a later creation time than the one before. False
/// when the file system keeps no creation times.
bool writeFilesOneAfterAnother(const QStringList &paths, const QByteArray &content);
