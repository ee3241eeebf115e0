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
/// A canonical path costs ten times the walk itself. That of a regular file is its folder's plus its name,
/// and hardly ever does it depend on the name whether a location is left out: so one is asked for in each
/// folder, and only while a location rule is on.
class SkipRules
{
public:
    explicit SkipRules(const ScanOptions &options);

    /// Whether the regular file at \a path is left out. Quick when it is in the same folder as the file
    /// before.
    bool skip(const QString &path);

private:
    bool skipLocation(const QString &path);
    void enter(const QString &folder);

    const QStringList m_locations;
    const bool m_skipsHidden;

    /// The folder of the file before, with a slash at its end like its canonical path.
    QString m_folder;
    QString m_canonicalFolder;
    bool m_skipsFolder = false;
    bool m_dependsOnName = false;
};
