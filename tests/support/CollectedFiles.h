#pragma once

#include "scan/FileCollection.h"

/// Options under which every file that the walk meets is collected.
inline ScanOptions everyType()
{
    ScanOptions options;
    options.fileTypes = {QStringLiteral("picture"), QStringLiteral("video"), QStringLiteral("audio"),
        QStringLiteral("document"), QStringLiteral("archive"), QStringLiteral("other")};
    return options;
}

/// Callbacks of a caller who lets the walk run to its end and does not listen.
inline CollectionCallbacks silentCallbacks()
{
    return {.counted = [] {}, .progress = [](const QString &, int) {}, .abandoned = [] { return false; }};
}

/// What a scan of \a folders collects, in the order of the walk.
inline QStringList collect(const QStringList &folders, const ScanOptions &options = everyType())
{
    return collectFiles(folders, options, silentCallbacks());
}

inline QStringList sorted(QStringList paths)
{
    paths.sort();
    return paths;
}
