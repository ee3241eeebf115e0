#pragma once

#include <QString>
#include <QStringList>

// Kept deliberately: three suffix tables that differ. A type collects more suffixes than the results page
// shows under it, and only some picture formats get a thumbnail.

/// The text after the last dot of the file name in \a path, in lower case; empty if there is no dot. The
/// separator in \a path must be "/", as in all paths from Qt.
[[nodiscard]] QString lowerCaseSuffix(const QString &path);

/// The key of the category in which the results page shows files with this lower-case \a suffix: "picture",
/// "video", "audio", "document" or "archive"; "other" for all other suffixes.
[[nodiscard]] QString categoryOf(const QString &suffix);

/// Whether a scan with the selected categories \a fileTypes collects files with this lower-case \a suffix.
/// "other" accepts every suffix, even those of categories that are not selected.
[[nodiscard]] bool collectionAccepts(const QString &suffix, const QStringList &fileTypes);

/// Whether the results page shows a thumbnail for files with this lower-case \a suffix.
[[nodiscard]] bool hasThumbnail(const QString &suffix);
