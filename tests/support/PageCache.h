#pragma once

#include <QString>

/// Removes the content of a file from the page cache, so that the next read waits for the disk. False if the
/// system or the file system does not support it.
bool dropFromPageCache(const QString &path);
