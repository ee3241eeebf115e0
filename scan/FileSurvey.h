#pragma once

#include "scan/AbandonCheck.h"
#include "scan/ScanOptions.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <compare>
#include <functional>
#include <limits>
#include <vector>

/// Identifies a file independently of its paths: device and inode, or volume and file id.
struct FileIdentity
{
    quint64 device = 0;
    quint64 inode = 0;

    friend auto operator<=>(const FileIdentity &, const FileIdentity &) = default;
};

/// A regular file that a survey found.
struct SurveyedFile
{
    /// Begins with the path of its folder in SurveyRequest::folders.
    QString path;
    /// Bytes.
    qint64 size = 0;
    /// Milliseconds since 1970-01-01 UTC. If the creation time is unknown, both are the modification time.
    qint64 modified = 0;
    qint64 created = 0;
    FileIdentity identity = {};
    /// Number of hard links to the file, this path included.
    quint32 links = 1;
    /// Index into SurveyRequest::folders.
    qint32 folder = 0;
};

/// A file or folder that could not be read.
struct UnreadablePath
{
    QString path;
    /// The error message of the system.
    QString reason;
};

/// Returns whether a file or folder is left out. \a name is its own name, \a pathBelowFolder its path
/// relative to the searched folder. Called on several threads.
using ExclusionRule = std::function<bool(QStringView name, QStringView pathBelowFolder)>;

/// What a survey looks for.
struct SurveyRequest
{
    QStringList folders;
    bool includeHidden = false;
    /// Bytes, both ends included.
    qint64 minSize = 1;
    qint64 maxSize = std::numeric_limits<qint64>::max();
    /// Only the file types and location rules are used; the sizes and skipHiddenFolders are ignored.
    ScanOptions options = {};
    /// May be empty.
    ExclusionRule excluded = {};
    /// Number of threads that read folders; less than 1 counts as 1.
    int threads = 1;
};

/// Callbacks of surveyFiles(). Both must be set. Called on several threads.
struct SurveyCallbacks
{
    /// Called from time to time with the number of files found so far.
    std::function<void(qint64 files)> progress;
    /// True ends the survey early; the result is then what was found so far.
    AbandonCheck abandoned;
};

/// The result of surveyFiles(), in no particular order.
struct Survey
{
    std::vector<SurveyedFile> files;
    QList<UnreadablePath> unreadable;
    /// Number of files and folders left out because their names are not valid text.
    qint64 undecodableNames = 0;
};

/// Finds the files in the folders of \a request and reads size, times and identity of each. Links are not
/// followed. A file with several paths is found once for each path. Blocks; creates its own threads.
[[nodiscard]] Survey surveyFiles(const SurveyRequest &request, const SurveyCallbacks &callbacks);
