#pragma once

#include "cli/HeldFile.h"
#include "cli/Obstacle.h"

#include <QString>

#include <optional>

/// Makes the trash into which QFile::moveToTrash() moves \a file, where it is missing, and returns why the
/// file cannot go there.
///
/// Qt 6.4 must not be called without: when it cannot make a trash, it moves the file into a folder "files" of
/// the working folder; when it cannot write into one, it tries again without end.
[[nodiscard]] std::optional<Obstacle> prepareTrash(const HeldFile &file);

/// Makes the note beside a trashed file correct, from which other programs restore it: Qt 6.4 writes the
/// path \a origin into it as it is, but "%" and control characters must be encoded.
void correctTrashNote(const QString &pathInTrash, const QString &origin);
