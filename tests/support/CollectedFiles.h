#pragma once

#include "scan/FileCollection.h"

/// Options that accept every file.
inline ScanOptions everyType()
{
    ScanOptions options;
    options.fileTypes = {QStringLiteral("picture"), QStringLiteral("video"), QStringLiteral("audio"),
        QStringLiteral("document"), QStringLiteral("archive"), QStringLiteral("other")};
    return options;
}

/// Callbacks that ignore progress and never abandon the walk.
inline CollectionCallbacks silentCallbacks()
{
    return {.counted = [] {}, .progress = [](const QString &, int) {}, .abandoned = [] { return false; }};
}

/// The files that a scan of \a folders collects, in the order of the walk.
inline QStringList collect(const QStringList &folders, const ScanOptions &options = everyType())
{
    return collectFiles(folders, options, silentCallbacks());
}

inline QStringList sorted(QStringList paths)
{
    paths.sort();
    return paths;
}
