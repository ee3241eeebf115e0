#pragma once

#include "cli/HeldFile.h"
#include "cli/Obstacle.h"

#include <QString>

#include <optional>

/// Creates the trash folder that QFile::moveToTrash() uses for \a file, unless it exists. Returns why the
/// file cannot be moved there.
///
/// Must be called before QFile::moveToTrash() of Qt 6.4. Without a trash folder, that function moves the file
/// into a folder "files" of the working folder; if it cannot write into the trash, it never returns.
[[nodiscard]] std::optional<Obstacle> prepareTrash(const HeldFile &file);

/// Corrects the .trashinfo file of a trashed file, from which other programs restore it. Qt 6.4 writes the
/// path \a origin unencoded, but "%" and control characters must be encoded.
void correctTrashNote(const QString &pathInTrash, const QString &origin);
