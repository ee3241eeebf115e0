#pragma once

#include "scan/FileSurvey.h"

#include <functional>
#include <span>
#include <vector>

/// How two files of equal size are compared.
enum class ContentComparison {
    Bytes,  ///< every byte
    Sample, ///< the fingerprint of FileHash.h
};

/// Both must be set. Called on any thread.
struct ComparisonCallbacks
{
    /// Now and then: bytes dealt with so far and bytes in all. Files that drop out early count whole.
    std::function<void(qint64 done, qint64 total)> progress;
    /// True ends the comparison early, with no groups.
    std::function<bool()> abandoned;
};

/// Which files have equal contents.
struct ContentGroups
{
    /// Groups of two or more indexes into the files that were compared, each in ascending order.
    std::vector<std::vector<quint32>> groups;
    /// Files that could not be read to their end; they are in no group.
    QList<UnreadablePath> unreadable;
};

/// Groups \a files by content. Files are compared with files of equal size only; each must be given once.
/// Reads on \a threads threads and keeps a bounded number of files open.
[[nodiscard]] ContentGroups groupByContent(std::span<const SurveyedFile> files, ContentComparison comparison,
    int threads, const ComparisonCallbacks &callbacks);
