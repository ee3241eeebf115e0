#include "analysis/ComparisonRun.h"

#include <algorithm>
#include <memory>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

namespace {

/// Files that all threads together keep open, so that the disk can reorder the reads. Well below the limit of
/// 256 for a process on some systems.
constexpr std::size_t maxOpenFiles = 64;
/// Files that the rest of the program may have open.
constexpr std::size_t reservedFiles = 16;
/// A comparison needs two files.
constexpr std::size_t minOpenFilesPerTask = 2;

std::size_t availableOpenFiles()
{
#ifdef Q_OS_UNIX
    if (rlimit limit = {}; ::getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY) {
        const auto allowed = static_cast<std::size_t>(limit.rlim_cur);
        return std::clamp(allowed - std::min(allowed, reservedFiles), minOpenFilesPerTask, maxOpenFiles);
    }
#endif
    return maxOpenFiles;
}

int usableThreads(int wanted, std::size_t openFiles)
{
    return std::clamp(wanted, 1, static_cast<int>(openFiles / minOpenFilesPerTask));
}

} // namespace

ComparisonRun::ComparisonRun(
    std::span<const SurveyedFile> files, int threads, const ComparisonCallbacks &callbacks)
    : m_files(files)
    , m_callbacks(callbacks)
    , m_openFiles(availableOpenFiles())
    , m_threads(usableThreads(threads, m_openFiles))
{
}

const SurveyedFile &ComparisonRun::file(quint32 index) const
{
    return m_files[index];
}

bool ComparisonRun::isAbandoned() const
{
    return m_callbacks.abandoned();
}

std::size_t ComparisonRun::openFilesPerTask() const
{
    return m_openFiles / static_cast<std::size_t>(m_threads);
}

void ComparisonRun::addTotal(qint64 bytes)
{
    m_total += bytes;
}

void ComparisonRun::addProgress(qint64 bytes)
{
    m_callbacks.progress(m_done += bytes, m_total);
}

void ComparisonRun::addTask(Task task)
{
    m_tasks.add(std::move(task));
}

void ComparisonRun::addTasks(std::size_t count, NumberedTask task, Task continuation)
{
    struct Shared
    {
        NumberedTask task;
        Task continuation;
        std::atomic<std::size_t> unfinished = 0;
    };
    const auto shared = std::make_shared<Shared>();
    shared->task = std::move(task);
    shared->continuation = std::move(continuation);
    shared->unfinished = count;
    for (std::size_t number = count; number-- > 0;) {
        addTask([shared, number] {
            shared->task(number);
            if (--shared->unfinished == 0)
                shared->continuation();
        });
    }
}

void ComparisonRun::runTasks()
{
    runOnThreads(m_threads, [this] {
        while (const std::optional<Task> task = m_tasks.take()) {
            if (!isAbandoned())
                (*task)();
            m_tasks.finish();
        }
    });
}

void ComparisonRun::addGroup(EqualFiles group)
{
    if (group.others.empty())
        return;
    std::vector<quint32> files = std::move(group.others);
    files.push_back(group.first);
    std::ranges::sort(files);
    files.shrink_to_fit();
    const QMutexLocker lock(&m_mutex);
    m_groups.push_back(std::move(files));
}

void ComparisonRun::addUnreadable(quint32 index, const QString &reason)
{
    const QMutexLocker lock(&m_mutex);
    m_unreadable.emplace_back(index, reason);
}

ContentGroups ComparisonRun::takeResult()
{
    if (isAbandoned())
        return {};
    std::ranges::sort(m_groups);
    std::ranges::sort(m_unreadable);
    // Tasks that read different ranges of a file may each have reported it.
    const auto isSameFile = [](const auto &a, const auto &b) { return a.first == b.first; };
    m_unreadable.erase(std::unique(m_unreadable.begin(), m_unreadable.end(), isSameFile), m_unreadable.end());
    ContentGroups result{.groups = std::move(m_groups), .unreadable = {}};
    for (const auto &[index, reason] : m_unreadable)
        result.unreadable.append({m_files[index].path, reason});
    return result;
}
