#pragma once

#include <QString>

/// Makes the file at \a path impossible to delete even for the superuser, or takes that back. False when the
/// file system or the rights of this process do not allow it.
bool setDeletionLock(const QString &path, bool locked);
