#pragma once

#include <QByteArray>
#include <QByteArrayView>

/// The 32 raw bytes of SHA-256 over \a head followed by \a tail. Safe on any number of threads at once.
///
/// Computed by libcrypto where the build has found it, which uses the processor's own SHA instructions, and
/// by QCryptographicHash otherwise.
QByteArray sha256(QByteArrayView head, QByteArrayView tail);
