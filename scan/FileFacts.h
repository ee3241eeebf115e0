#pragma once

#include "scan/FileSurvey.h"

#include <optional>
#include <variant>

class FolderEntries;

/// Sizes of files in bytes, both ends included.
struct SizeLimits
{
    qint64 smallest = 0;
    qint64 largest = 0;

    [[nodiscard]] bool contain(qint64 size) const
    {
        return size >= smallest && size <= largest;
    }
};

/// A file of a wanted size, or why the system does not tell.
using FileFacts = std::variant<SurveyedFile, UnreadablePath>;

/// Asks the system once for the facts of the current file of \a entries, which \a path leads to. Nothing when
/// its size is not wanted, or when it is gone or has become something else.
[[nodiscard]] std::optional<FileFacts> factsOf(
    const FolderEntries &entries, const QString &path, SizeLimits limits);
