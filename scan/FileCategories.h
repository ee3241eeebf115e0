#pragma once

#include <QString>
#include <QStringList>

// Three suffix tables that differ on purpose: what a selected type collects is wider than what the results
// page files under that type, and only some picture formats get a thumbnail.

/// The text after the last dot of the file name in \a path, in lower case; empty when there is no dot. The
/// folders of the path must be separated by "/", as Qt does it on every system.
QString lowerCaseSuffix(const QString &path);

/// The category key under which the results page shows a file with this lower-case \a suffix: "picture",
/// "video", "audio", "document" or "archive"; "other" for every suffix that none of them lists.
QString categoryOf(const QString &suffix);

/// Whether a file with this lower-case \a suffix is collected when the categories \a fileTypes are selected.
/// "other" takes every file that no selected category claims, so "other" alone collects every file.
bool collectionAccepts(const QString &suffix, const QStringList &fileTypes);

/// Whether a file with this lower-case \a suffix is shown with a thumbnail of its content.
bool hasThumbnail(const QString &suffix);
