#pragma once

#include "cli/SearchedFolders.h"
#include "scan/FileSurvey.h"

#include <span>
#include <vector>

/// The files of a survey, each once however many paths lead to it.
struct UniqueFiles
{
    /// One name of each file: that of the earliest folder, then of the first path.
    std::vector<SurveyedFile> files;
    /// All further names, ordered by identity, then as above. Each path stands in one of the two lists, once.
    std::vector<SurveyedFile> furtherNames;

    /// Those of \a file.
    [[nodiscard]] std::span<const SurveyedFile> furtherNamesOf(const SurveyedFile &file) const;
};

/// Brings together the paths in \a found that lead to the same file.
[[nodiscard]] UniqueFiles uniteNames(std::vector<SurveyedFile> found, const SearchedFolders &folders);
