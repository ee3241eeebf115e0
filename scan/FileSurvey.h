#pragma once

#include "scan/ScanOptions.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <compare>
#include <functional>
#include <limits>
#include <vector>

/// Tells two files apart, however many paths lead to each: device and inode, or volume and file id.
struct FileIdentity
{
    quint64 device = 0;
    quint64 inode = 0;

    friend auto operator<=>(const FileIdentity &, const FileIdentity &) = default;
};

/// A regular file and what the walk learnt of it.
struct SurveyedFile
{
    /// Begins with the folder as it was given.
    QString path;
    /// Bytes.
    qint64 size = 0;
    /// Milliseconds since 1970-01-01 UTC. Creation falls back to modification where the system keeps none.
    qint64 modified = 0;
    qint64 created = 0;
    FileIdentity identity = {};
    /// Number of names, this one included.
    quint32 links = 1;
    /// Index into SurveyRequest::folders.
    qint32 folder = 0;
};

/// A file or folder that could not be read.
struct UnreadablePath
{
    QString path;
    /// The system's own words.
    QString reason;
};

/// Whether a file or folder is left out. \a name is its own name, \a pathBelowFolder the path below the
/// folder that the walk began with. Called on any thread.
using ExclusionRule = std::function<bool(QStringView name, QStringView pathBelowFolder)>;

/// What a survey looks for.
struct SurveyRequest
{
    QStringList folders;
    bool includeHidden = false;
    /// Bytes, both ends included.
    qint64 minSize = 1;
    qint64 maxSize = std::numeric_limits<qint64>::max();
    /// File types and location rules. Its sizes and skipHiddenFolders are not read.
    ScanOptions options = {};
    /// May be empty.
    ExclusionRule excluded = {};
    /// Threads that read folders.
    int threads = 1;
};

/// Both must be set. Called on any thread.
struct SurveyCallbacks
{
    /// Now and then: files found so far.
    std::function<void(qint64 files)> progress;
    /// True ends the survey early with whatever it has found.
    std::function<bool()> abandoned;
};

/// What a survey found, in no particular order.
struct Survey
{
    std::vector<SurveyedFile> files;
    QList<UnreadablePath> unreadable;
    /// Entries whose names are no valid text; they are left out.
    qint64 undecodableNames = 0;
};

/// Walks the folders of \a request once, on several threads, and asks for the facts of each file once. Links
/// are never followed. A file that several paths lead to is found once for each of them.
[[nodiscard]] Survey surveyFiles(const SurveyRequest &request, const SurveyCallbacks &callbacks);
