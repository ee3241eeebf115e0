#pragma once

#include "scan/AbandonCheck.h"

#include <QByteArray>
#include <QFuture>
#include <QList>
#include <QString>
#include <QStringList>

/// A file and its fingerprint.
struct FileHash
{
    /// The path exactly as the caller passed it.
    QString filePath;
    /// The 32 raw bytes of the fingerprint; empty if the file could not be opened.
    QByteArray hash;
};

/// Size in bytes of the samples at the start and at the end of a file that its fingerprint covers.
inline constexpr int fingerprintSampleSize = 4096;

/// The fingerprint of the file at \a path: the 32 raw bytes of SHA-256 over its first \a chunkSize bytes and,
/// if it is larger than twice that, its last \a chunkSize bytes. Reads no other bytes. Empty if the file
/// cannot be opened or is not a regular file. Thread-safe.
///
/// Kept deliberately: a read error is not detected. The bytes read so far are the fingerprint's input, so the
/// file can still be in a group.
[[nodiscard]] QByteArray computeFileHash(const QString &path, int chunkSize);

/// Starts to compute the fingerprints of \a paths on the global thread pool. The result has one record for
/// each path, in order. \a abandoned is called before each file, on several threads; once it returns true,
/// the remaining files get empty fingerprints.
[[nodiscard]] QFuture<QList<FileHash>> startComputingHashes(const QStringList &paths, AbandonCheck abandoned);

/// Computes the fingerprints of \a paths on the global thread pool. Returns one record for each path, in
/// order. Blocks; may be called on a thread of that pool, see PoolThreadRelease.
[[nodiscard]] QList<FileHash> computeHashesConcurrently(const QStringList &paths);
