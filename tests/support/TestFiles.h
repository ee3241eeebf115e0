#pragma once

#include <QByteArray>
#include <QString>

/// Writes \a content to \a path, creating the folders on the way; aborts the program when that fails.
void writeFile(const QString &path, const QByteArray &content);

/// Makes the file's modification time \a seconds after 2020-01-01 00:00:00 UTC.
void setModificationTime(const QString &path, qint64 seconds);
