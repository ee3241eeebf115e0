#pragma once

#include <QByteArray>
#include <QByteArrayView>

/// The 32 raw bytes of SHA-256 over \a head followed by \a tail. Thread-safe.
///
/// Uses libcrypto if the build has found it, and CNG on Windows, because both use the SHA instructions of the
/// processor. Uses QCryptographicHash otherwise, and when they fail.
[[nodiscard]] QByteArray sha256(QByteArrayView head, QByteArrayView tail);
