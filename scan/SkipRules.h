#pragma once

#include "scan/ScanOptions.h"

#include <QString>
#include <QStringList>

/// What the canonical paths of files begin with that the location rules of \a options leave out.
QStringList skippedLocations(const ScanOptions &options, const QString &desktopFolder);

/// Whether a file with this canonical path is left out. Plain prefixes that ignore case, so C:/WindowsApps
/// falls to the rule for C:/Windows as well.
bool isSkippedLocation(const QString &canonicalPath, const QStringList &locations);

/// The skip rules of one scan. Any one thread.
///
/// Asking for a file's canonical path takes ten times as long as the walk itself. A walk follows no links, so
/// the canonical path of a file is that of the folder where the walk began, plus what follows. Only those are
/// asked for, and only while a location rule is on. Few locations depend on a file's name.
class SkipRules
{
public:
    /// For a walk of \a folders.
    SkipRules(const ScanOptions &options, const QStringList &folders);

    /// Whether the regular file at \a path, as the walk found it, is left out. Quick when it is in the same
    /// folder as the file before.
    bool skip(const QString &path);

private:
    /// Paths with a slash at their ends; the canonical one of a folder that is not there is empty.
    struct Folder
    {
        QString path;
        QString canonicalPath;
    };

    bool skipLocation(const QString &path);
    void enter(const QString &folder);
    [[nodiscard]] QString canonicalPathOf(const QString &folder) const;

    const QStringList m_locations;
    const bool m_skipsHidden;
    /// Where the walk begins, the longest path first: one such folder may be a link that lies in another.
    QList<Folder> m_beginnings;

    /// The folder of the file before.
    Folder m_folder;
    bool m_skipsFolder = false;
    bool m_dependsOnName = false;
};
