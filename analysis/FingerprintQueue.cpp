#include "analysis/FingerprintQueue.h"

#include "analysis/PoolThreadRelease.h"

#include <algorithm>

namespace {

/// Jobs of a large run: more make the progress smoother, fewer take less time to start.
constexpr qsizetype jobsAtLeast = 256;
/// Files of a job in a small run: fewer would make the start of a job show.
constexpr qsizetype filesWorthAJob = 64;
/// Bounds the memory of the jobs under way.
constexpr qsizetype filesOfAJobAtMost = 512;
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
    // The jobs use what the caller may free after this.
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
