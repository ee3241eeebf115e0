#pragma once

#include "analysis/FileHash.h"
#include "analysis/SizeClasses.h"

#include <QFuture>

#include <deque>
#include <functional>
#include <vector>

/// Fingerprints the candidates of \a classes on the global thread pool, in their order and a bounded number
/// of files ahead of the caller.
///
/// Starting a map-reduce and waiting for it takes 50 to 100 us, as long as a dozen fingerprints. So a job is
/// one map-reduce over many whole size classes, and several jobs are under way at once.
class FingerprintQueue
{
public:
    /// \a abandoned is asked before each file, on any thread; once it is true the files left get no
    /// fingerprint. \a classes must outlive the queue.
    FingerprintQueue(const SizeClasses &classes, std::function<bool()> abandoned);
    /// Waits for what is under way.
    ~FingerprintQueue();
    Q_DISABLE_COPY_MOVE(FingerprintQueue)

    /// The next candidate's fingerprint; there must be one. Waits for it; the current thread may be one of
    /// the pool's.
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
