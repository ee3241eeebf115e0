#pragma once

#include "scan/FileSurvey.h"
#include "tests/support/CollectedFiles.h"

/// A request for every file below \a folders that is not hidden.
inline SurveyRequest everything(const QStringList &folders)
{
    return {.folders = folders, .minSize = 0, .options = everyType()};
}

inline Survey surveyQuietly(const SurveyRequest &request)
{
    return surveyFiles(request, {.progress = [](qint64) {}, .abandoned = [] { return false; }});
}

inline QStringList pathsOf(const Survey &survey)
{
    QStringList paths;
    for (const SurveyedFile &file : survey.files)
        paths.append(file.path);
    return sorted(paths);
}

inline QStringList unreadablePathsOf(const Survey &survey)
{
    QStringList paths;
    for (const UnreadablePath &entry : survey.unreadable)
        paths.append(entry.path);
    return sorted(paths);
}
