#pragma once

#include <QString>

/// \a bytes in units of 1024: "123 B", "4.20 MB".
[[nodiscard]] QString sizeText(qint64 bytes);

/// "1 file", "2 files": \a noun gets an s unless \a count is 1.
[[nodiscard]] QString counted(qint64 count, const QString &noun);
