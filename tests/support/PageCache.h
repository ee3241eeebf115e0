#pragma once

#include <QString>

/// Takes the content of a file out of memory, so that whoever reads it next waits for the disk. False when it
/// is still there, as some systems and file systems have it.
bool dropFromPageCache(const QString &path);
