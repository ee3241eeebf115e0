#pragma once

#include "scan/FileSurvey.h"

#include <optional>
#include <variant>

class FolderEntries;

/// A range of file sizes in bytes, both ends included.
struct SizeLimits
{
    qint64 smallest = 0;
    qint64 largest = 0;

    [[nodiscard]] bool contains(qint64 size) const
    {
        return size >= smallest && size <= largest;
    }
};

/// A file within the size limits, or the reason why its facts cannot be read.
using FileFacts = std::variant<SurveyedFile, UnreadablePath>;

/// Size, times and identity of the current file of \a entries. \a path must be the path of that file.
/// Nothing if the size is outside \a limits, or if the file is gone or no longer a regular file.
[[nodiscard]] std::optional<FileFacts> factsOf(
    const FolderEntries &entries, const QString &path, SizeLimits limits);
