#pragma once

#include <QByteArray>
#include <QFuture>
#include <QList>
#include <QString>

#include <functional>

/// A file and its fingerprint.
struct FileHash
{
    /// The path exactly as it was handed in.
    QString filePath;
    /// 32 raw bytes of SHA-256; empty when the file could not be opened.
    QByteArray hash;
};

/// Bytes of a file's beginning, and of its end, that the program's fingerprints cover.
inline constexpr int fingerprintSampleSize = 4096;

/// The fingerprint of one file: SHA-256 over its first \a chunkSize bytes and, when it is larger than twice
/// that, its last \a chunkSize bytes. What lies between is never read. Empty when the file cannot be opened
/// or is not a regular file; a read error after that is not noticed. Safe on any number of threads at once.
QByteArray computeFileHash(const QString &path, int chunkSize);

/// Starts the fingerprinting of \a paths on the global thread pool. The result holds one record per path, in
/// order. \a abandoned is asked before each file, on any thread; once it is true the files left get no
/// fingerprint.
QFuture<QList<FileHash>> startComputingHashes(const QList<QString> &paths, std::function<bool()> abandoned);

/// The fingerprints of \a paths, one record per path, in order, computed on the global thread pool. Blocks
/// until all are there. May be called from a thread of that pool, which is lent to the pool for the time.
QList<FileHash> computeHashesConcurrently(const QList<QString> &paths);
