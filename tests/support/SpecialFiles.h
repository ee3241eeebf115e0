#pragma once

#include <QByteArray>
#include <QString>

// Entries of a folder that not every system knows. Those that make one return whether it is there afterwards.

/// Makes a named pipe that nobody has opened.
bool makePipe(const QString &path);
/// Makes the socket of a server that is not running.
bool makeSocket(const QString &path);
/// Makes a symbolic link to \a target, which is taken as it is and need not exist.
bool makeLink(const QString &target, const QString &path);
/// Makes \a path one more name of the file \a existing.
bool makeHardLink(const QString &existing, const QString &path);
/// Writes a file whose name is these bytes, whether they make sense as text or not.
bool writeFileWithRawName(const QString &folder, const QByteArray &name, const QByteArray &content);
/// Removes such a file, which a QTemporaryDir cannot; true when it is gone.
bool removeFileWithRawName(const QString &folder, const QByteArray &name);
