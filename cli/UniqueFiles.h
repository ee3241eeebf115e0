#pragma once

#include "cli/SearchedFolders.h"
#include "scan/FileSurvey.h"

#include <span>
#include <vector>

/// The files of a survey, each once, even if several paths lead to it.
struct UniqueFiles
{
    /// One name of each file: the one of the earliest folder, and of these the first path.
    std::vector<SurveyedFile> files;
    /// All further names, sorted by identity, then by folder and path. No path is in both lists or listed
    /// twice.
    std::vector<SurveyedFile> furtherNames;

    /// The further names of \a file.
    [[nodiscard]] std::span<const SurveyedFile> furtherNamesOf(const SurveyedFile &file) const;
};

/// Groups the paths in \a found by the file that they lead to.
[[nodiscard]] UniqueFiles uniteNames(std::vector<SurveyedFile> found, const SearchedFolders &folders);
