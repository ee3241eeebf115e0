#pragma once

#include "scan/FileSurvey.h"
#include "tests/support/CollectedFiles.h"

/// A request for all files below \a folders that are not hidden.
inline SurveyRequest everything(const QStringList &folders)
{
    return {.folders = folders, .minSize = 0, .options = everyType()};
}

/// Calls surveyFiles() with callbacks that do nothing.
inline Survey surveyQuietly(const SurveyRequest &request)
{
    return surveyFiles(request, {.progress = [](qint64) {}, .abandoned = [] { return false; }});
}

/// The sorted paths of the files.
inline QStringList pathsOf(const Survey &survey)
{
    QStringList paths;
    for (const SurveyedFile &file : survey.files)
        paths.append(file.path);
    return sorted(paths);
}

/// The sorted paths that could not be read.
inline QStringList unreadablePathsOf(const Survey &survey)
{
    QStringList paths;
    for (const UnreadablePath &entry : survey.unreadable)
        paths.append(entry.path);
    return sorted(paths);
}
