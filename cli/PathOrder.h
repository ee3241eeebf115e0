#pragma once

#include <QStringView>

/// Whether \a a comes before \a b in the order of their UTF-8 bytes. QString compares UTF-16 code units,
/// which places characters above U+FFFF before U+E000.
[[nodiscard]] bool comesBefore(QStringView a, QStringView b);

/// Size of \a text in UTF-8, in bytes.
[[nodiscard]] qsizetype utf8Size(QStringView text);
