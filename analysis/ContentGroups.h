#pragma once

#include "scan/AbandonCheck.h"
#include "scan/FileSurvey.h"

#include <functional>
#include <span>
#include <vector>

/// How files of equal size are compared.
enum class ContentComparison {
    Bytes,  ///< every byte
    Sample, ///< the fingerprint, see computeFileHash()
};

/// Callbacks of groupByContent(). Both must be set. Called on several threads.
struct ComparisonCallbacks
{
    /// Called from time to time with the bytes compared so far and the bytes of all files to compare. A file
    /// counts with its whole size as soon as it is known to differ.
    std::function<void(qint64 done, qint64 total)> progress;
    /// True ends the comparison early; the result then has no groups.
    AbandonCheck abandoned;
};

/// The result of groupByContent().
struct ContentGroups
{
    /// Groups of two or more files with equal content, as ascending indexes into the compared files.
    std::vector<std::vector<quint32>> groups;
    /// Files that could not be read completely. They are in no group.
    QList<UnreadablePath> unreadable;
};

/// Groups \a files by size and content. Each file must be listed once. Reads on \a threads new threads, keeps
/// a bounded number of files open, and blocks until done.
[[nodiscard]] ContentGroups groupByContent(std::span<const SurveyedFile> files, ContentComparison comparison,
    int threads, const ComparisonCallbacks &callbacks);
