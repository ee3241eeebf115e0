#pragma once

#include "scan/ScanOptions.h"

#include <QString>
#include <QStringList>

/// The prefixes of the canonical paths that the location rules of \a options skip.
[[nodiscard]] QStringList skippedLocations(const ScanOptions &options, const QString &desktopFolder);

/// Whether \a canonicalPath begins with one of \a locations, ignoring case. False for an empty path.
/// Kept deliberately: a plain prefix test, so the location C:/Windows covers C:/WindowsApps as well.
[[nodiscard]] bool isSkippedLocation(const QString &canonicalPath, const QStringList &locations);

/// The skip rules of one scan. Not thread-safe.
///
/// Looking up the canonical path of every file would take ten times as long as the walk. A walk does not
/// follow links, so the canonical path of a file is that of its scan folder plus the rest of its path. Only
/// the scan folders are looked up, and only if a location rule is on.
class SkipRules
{
public:
    /// \a folders are the scan folders.
    SkipRules(const ScanOptions &options, const QStringList &folders);

    /// Whether the rules skip the regular file at \a path, a path as the walk returned it. Fast if the file
    /// is in the same folder as the previous one.
    [[nodiscard]] bool skip(const QString &path);

private:
    /// Both paths end with a slash. canonicalPath is empty if the folder does not exist.
    struct Folder
    {
        QString path;
        QString canonicalPath;
    };

    [[nodiscard]] bool skipLocation(const QString &path);
    void enter(const QString &folder);
    [[nodiscard]] QString canonicalPathOf(const QString &folder) const;

    const QStringList m_locations;
    const bool m_skipsHidden;
    /// The scan folders, longest path first: a scan folder may be a link inside another one.
    QList<Folder> m_scanFolders;

    /// The folder of the previous file.
    Folder m_folder;
    /// Whether all files in m_folder are skipped.
    bool m_skipsFolder = false;
    /// Whether a location begins with the path of m_folder, so that the file name decides.
    bool m_dependsOnName = false;
};
