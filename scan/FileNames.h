#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringView>

// File names enter the program here. A name either stays what it is or is left out: none may become
// another's.

/// Whether \a name, as Linux hands it out, can be told back to the system by a path made of it: any valid
/// UTF-8, nothing else.
[[nodiscard]] bool isDecodable(QByteArrayView name);

/// The path of the entry \a name, which must be decodable, in the folder that \a folderWithSlash leads to.
/// QFile::encodeName() yields the same bytes again.
[[nodiscard]] QString decodedPath(const QString &folderWithSlash, QByteArrayView name);

/// Whether a path on Windows that ends with \a name leads to the entry of that name. Windows drops dots and
/// blanks at the end, takes the names of devices for the devices, and a colon for the start of a stream.
/// Names with unpaired surrogates are no valid text.
[[nodiscard]] bool keepsItsNameOnWindows(QStringView name);
