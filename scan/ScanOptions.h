#pragma once

#include <QString>
#include <QStringList>

/// What one scan is to collect. A plain value: copied into the options dialog, back out of it, and into
/// the collection task.
struct ScanOptions
{
    /// Keys of the selected categories: "picture", "video", "audio", "document", "archive", "other".
    QStringList fileTypes;

    // The sizes are carried for the dialog only; no file is ever left out because of its size.
    qint32 minSize = 0;
    QString minUnit;
    qint32 maxSize = 0;
    QString maxUnit;

    bool skipSystem = false;
    bool skipApps = false;
    /// Skips files that are hidden themselves, whatever their folder is.
    bool skipHiddenFolders = false;
    bool skipDesktop = false;
};
