#include "analysis/FingerprintQueue.h"

#include "analysis/PoolThreadRelease.h"

#include <algorithm>

namespace {

/// A job is so small a part of the whole that progress goes on smoothly,
constexpr qsizetype jobsAtLeast = 256;
/// but of so many files, if there are, that to start it and to wait for it does not show,
constexpr qsizetype filesWorthAJob = 64;
/// and not of so many that what is under way takes much memory.
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
    // Nothing of an abandoned run may go on behind its caller's back.
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
