#include "analysis/FingerprintQueue.h"

#include "analysis/PoolThreadRelease.h"

namespace {

constexpr qsizetype filesWorthAJob = 64;
constexpr std::size_t jobsUnderWay = 16;

} // namespace

FingerprintQueue::FingerprintQueue(const SizeClasses &classes, std::function<bool()> abandoned)
    : m_classes(classes)
    , m_abandoned(std::move(abandoned))
    , m_nextClass(classes.counts.cbegin())
{
}

FingerprintQueue::~FingerprintQueue()
{
    // Nothing of an abandoned run may go on behind its caller's back.
    for (QFuture<QList<FileHash>> &job : m_jobs) {
        job.cancel();
        waitReleasingPoolThread(job);
    }
}

void FingerprintQueue::startNextJob()
{
    qsizetype files = 0;
    for (; m_nextClass != m_classes.counts.cend() && files < filesWorthAJob; ++m_nextClass) {
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
