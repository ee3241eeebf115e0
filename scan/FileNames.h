#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringView>

// All file names enter the program here. A name is either kept exactly or left out, so that a path never
// leads to another file.

/// Whether QFile::encodeName() turns the decoded \a name back into the same bytes. \a name is a file name as
/// Linux returns it. True for valid UTF-8 only.
[[nodiscard]] bool isDecodable(QByteArrayView name);

/// \a folderWithSlash followed by the decoded \a name. \a name must be decodable.
[[nodiscard]] QString decodedPath(const QString &folderWithSlash, QByteArrayView name);

/// Whether a Windows path that ends with \a name leads to the entry of that name. False for names that end
/// with a dot or a blank, which Windows drops; for names of devices; for names with a colon, which starts a
/// stream name; and for names with unpaired surrogates.
[[nodiscard]] bool keepsItsNameOnWindows(QStringView name);
