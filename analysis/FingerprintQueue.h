#pragma once

#include "analysis/FileHash.h"
#include "analysis/SizeClasses.h"

#include <QFuture>

#include <deque>
#include <optional>
#include <span>
#include <vector>

/// A size class and the fingerprints of its files.
struct FingerprintedClass
{
    SizeClass sizeClass;
    /// One record for each file, in order. Valid until the next call of takeNext().
    std::span<const FileHash> hashes;
};

/// Computes the fingerprints of all size classes on the global thread pool, a bounded number of files ahead
/// of the caller. Not thread-safe.
///
/// Starting a map-reduce and waiting for it takes 50 to 100 us, as long as a dozen fingerprints. Therefore a
/// job is one map-reduce over many size classes, and several jobs are in flight.
class FingerprintQueue
{
public:
    /// \a abandoned is called before each file, on several threads; once it returns true, the remaining files
    /// get empty fingerprints. \a classes must outlive the queue.
    FingerprintQueue(const SizeClasses &classes, AbandonCheck abandoned);
    /// Cancels the jobs in flight and waits for them.
    ~FingerprintQueue();
    Q_DISABLE_COPY_MOVE(FingerprintQueue)

    /// The next size class, in ascending order of size; nothing at the end. Blocks; may be called on a thread
    /// of the global pool.
    [[nodiscard]] std::optional<FingerprintedClass> takeNext();

private:
    void startNextJob();
    void waitForNextJob();

    const SizeClasses &m_classes;
    const AbandonCheck m_abandoned;
    const qsizetype m_filesPerJob;
    /// The classes that are not part of a job yet.
    std::span<const SizeClass> m_unstarted;
    /// The classes that takeNext() has not returned yet.
    std::span<const SizeClass> m_untaken;
    std::deque<QFuture<QList<FileHash>>> m_jobs;
    /// The result of the job that ended last.
    QList<FileHash> m_hashes;
    /// The part of m_hashes that takeNext() has not returned yet.
    std::span<const FileHash> m_untakenHashes;
};
