#pragma once

#include <QByteArray>
#include <QString>

// Entries that not every system supports. All functions return false on failure.

/// Creates a named pipe that no process has open.
bool makePipe(const QString &path);
/// Creates the socket of a server that is not running.
bool makeSocket(const QString &path);
/// Creates a symbolic link to \a target, which need not exist.
bool makeLink(const QString &target, const QString &path);
/// Creates a hard link \a path to the file \a existing.
bool makeHardLink(const QString &existing, const QString &path);
/// Writes a file whose name consists of these bytes, which need not be text.
bool writeFileWithRawName(const QString &folder, const QByteArray &name, const QByteArray &content);
/// Removes a file that QTemporaryDir cannot remove because of its name.
bool removeFileWithRawName(const QString &folder, const QByteArray &name);
