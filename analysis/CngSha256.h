#pragma once

#include <QByteArray>
#include <QByteArrayView>

/// The 32 raw bytes of SHA-256 over \a head followed by \a tail, computed by Windows (CNG, bcrypt.dll), which
/// uses the SHA instructions of the processor. Empty if Windows fails. Thread-safe.
[[nodiscard]] QByteArray sha256ByCng(QByteArrayView head, QByteArrayView tail);
