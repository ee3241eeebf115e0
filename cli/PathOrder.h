#pragma once

#include <QStringView>

/// Whether \a a comes before \a b when their UTF-8 bytes are compared. QString's own order is that of UTF-16,
/// which sorts characters beyond U+FFFF before those from U+E000.
[[nodiscard]] bool comesBefore(QStringView a, QStringView b);

/// Bytes of \a text in UTF-8.
[[nodiscard]] qsizetype utf8Size(QStringView text);
