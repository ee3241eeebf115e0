#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Writes \a content to \a path and creates its folders; aborts the program on failure.
void writeFile(const QString &path, const QByteArray &content);

/// Sets the modification time of the file to \a seconds after 2020-01-01 00:00:00 UTC.
void setModificationTime(const QString &path, qint64 seconds);

/// Writes the files in the given order, each with a later creation time than the one before. False if the
/// file system keeps no creation times.
bool writeFilesOneAfterAnother(const QStringList &paths, const QByteArray &content);
