#include "analysis/FingerprintQueue.h"

#include "analysis/PoolThreadRelease.h"

#include <algorithm>

namespace {

/// Minimum number of jobs of a large run. More jobs make the progress smoother but take more time to start.
constexpr qsizetype minJobs = 256;
/// Minimum number of files of a job. With fewer, the time to start a job would be noticeable.
constexpr qsizetype minFilesPerJob = 64;
/// Maximum number of files of a job. Limits the memory of the jobs in flight.
constexpr qsizetype maxFilesPerJob = 512;
/// Jobs in flight: enough that all threads have work while the caller uses the results.
constexpr std::size_t maxJobsInFlight = 16;

} // namespace

FingerprintQueue::FingerprintQueue(const SizeClasses &classes, AbandonCheck abandoned)
    : m_classes(classes)
    , m_abandoned(std::move(abandoned))
    , m_filesPerJob(std::clamp(classes.candidates.size() / minJobs, minFilesPerJob, maxFilesPerJob))
    , m_unstarted(classes.classes)
    , m_untaken(classes.classes)
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
    const qsizetype begin = m_unstarted.front().firstCandidate;
    qsizetype files = 0;
    while (!m_unstarted.empty() && files < m_filesPerJob) {
        files += m_unstarted.front().count;
        m_unstarted = m_unstarted.subspan(1);
    }
    m_jobs.push_back(startComputingHashes(m_classes.candidates.sliced(begin, files), m_abandoned));
}

void FingerprintQueue::waitForNextJob()
{
    while (m_jobs.size() < maxJobsInFlight && !m_unstarted.empty())
        startNextJob();
    waitReleasingPoolThread(m_jobs.front());
    m_hashes = m_jobs.front().takeResult();
    m_untakenHashes = {m_hashes.cbegin(), m_hashes.cend()};
    m_jobs.pop_front();
}

std::optional<FingerprintedClass> FingerprintQueue::takeNext()
{
    if (m_untaken.empty())
        return std::nullopt;
    if (m_untakenHashes.empty())
        waitForNextJob();
    const SizeClass &next = m_untaken.front();
    const auto count = static_cast<std::size_t>(next.count);
    const FingerprintedClass result{next, m_untakenHashes.first(count)};
    m_untaken = m_untaken.subspan(1);
    m_untakenHashes = m_untakenHashes.subspan(count);
    return result;
}
