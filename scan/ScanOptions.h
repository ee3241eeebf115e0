#pragma once

#include <QString>
#include <QStringList>

/// What a scan collects. The options dialog edits a copy; each scan has its own copy.
struct ScanOptions
{
    /// Keys of the selected categories: "picture", "video", "audio", "document", "archive", "other".
    QStringList fileTypes;

    // Kept deliberately: the dialog shows and returns the sizes, but a scan collects files of every size.
    qint32 minSize = 0;
    QString minUnit;
    qint32 maxSize = 0;
    QString maxUnit;

    bool skipSystem = false;
    bool skipApps = false;
    /// Kept deliberately: skips hidden files, not all files in hidden folders.
    bool skipHiddenFolders = false;
    bool skipDesktop = false;
};
