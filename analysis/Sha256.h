#pragma once

#include <QByteArray>
#include <QByteArrayView>

/// The 32 raw bytes of SHA-256 over \a head followed by \a tail. Thread-safe.
///
/// Uses libcrypto if the build has found it, because it uses the SHA instructions of the processor; otherwise
/// QCryptographicHash.
[[nodiscard]] QByteArray sha256(QByteArrayView head, QByteArrayView tail);
