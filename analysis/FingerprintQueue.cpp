#include "analysis/FingerprintQueue.h"

#include "analysis/PoolThreadRelease.h"

#include <algorithm>

namespace {

/// Minimum number of jobs of a large run. More jobs make the progress smoother but take more time to start.
constexpr qsizetype jobsAtLeast = 256;
/// Minimum number of files of a job. With fewer, the time to start a job would be noticeable.
constexpr qsizetype filesWorthAJob = 64;
/// Maximum number of files of a job. Limits the memory of the jobs in flight.
constexpr qsizetype filesOfAJobAtMost = 512;
/// Jobs in flight: enough that all threads have work while the caller uses the results.
constexpr std::size_t jobsUnderWay = 16;

} // namespace

FingerprintQueue::FingerprintQueue(const SizeClasses &classes, std::function<bool()> abandoned)
    : m_classes(classes)
    , m_abandoned(std::move(abandoned))
    , m_filesPerJob(std::clamp(classes.candidates.size() / jobsAtLeast, filesWorthAJob, filesOfAJobAtMost))
    , m_nextClass(classes.counts.cbegin())
{
}

FingerprintQueue::~FingerprintQueue()
{
    // The jobs call the predicate of the caller, which may refer to variables that are destroyed next.
    for (QFuture<QList<FileHash>> &job : m_jobs) {
        job.cancel();
        waitReleasingPoolThread(job);
    }
}

void FingerprintQueue::startNextJob()
{
    qsizetype files = 0;
    for (; m_nextClass != m_classes.counts.cend() && files < m_filesPerJob; ++m_nextClass) {
        if (*m_nextClass >= 2)
            files += *m_nextClass;
    }
    m_jobs.push_back(startComputingHashes(m_classes.candidates.sliced(m_nextCandidate, files), m_abandoned));
    m_nextCandidate += files;
}

void FingerprintQueue::waitForNextJob()
{
    while (m_jobs.size() < jobsUnderWay && m_nextCandidate < m_classes.candidates.size())
        startNextJob();
    waitReleasingPoolThread(m_jobs.front());
    m_hashes = m_jobs.front().takeResult();
    m_taken = 0;
    m_jobs.pop_front();
}

QByteArray FingerprintQueue::takeNext()
{
    if (m_taken == m_hashes.size())
        waitForNextJob();
    return std::move(m_hashes[m_taken++].hash);
}
