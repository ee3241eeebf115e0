#pragma once

#include "analysis/FileHash.h"
#include "analysis/SizeClasses.h"

#include <QFuture>

#include <deque>
#include <functional>
#include <vector>

/// Computes the fingerprints of all candidates on the global thread pool, a bounded number of files ahead of
/// the caller. Not thread-safe.
///
/// Starting a map-reduce and waiting for it takes 50 to 100 us, as long as a dozen fingerprints. Therefore a
/// job is one map-reduce over many whole size classes, and several jobs are in flight.
class FingerprintQueue
{
public:
    /// \a abandoned is called before each file, on several threads; once it returns true, the remaining files
    /// get empty fingerprints. \a classes must outlive the queue.
    FingerprintQueue(const SizeClasses &classes, std::function<bool()> abandoned);
    /// Cancels the jobs in flight and waits for them.
    ~FingerprintQueue();
    Q_DISABLE_COPY_MOVE(FingerprintQueue)

    /// The fingerprint of the next candidate; there must be one. Blocks; may be called on a thread of the
    /// global pool.
    QByteArray takeNext();

private:
    void startNextJob();
    void waitForNextJob();

    const SizeClasses &m_classes;
    const std::function<bool()> m_abandoned;
    const qsizetype m_filesPerJob;
    std::vector<qsizetype>::const_iterator m_nextClass;
    qsizetype m_nextCandidate = 0;
    std::deque<QFuture<QList<FileHash>>> m_jobs;
    QList<FileHash> m_hashes;
    qsizetype m_taken = 0;
};
