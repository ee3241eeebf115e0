#pragma once

#include "analysis/Candidates.h"
#include "analysis/ContentGroups.h"
#include "scan/WorkQueue.h"

#include <QMutex>

#include <atomic>
#include <functional>
#include <span>
#include <vector>

/// The state that the threads of one groupByContent() share. Thread-safe unless a function says otherwise.
class ComparisonRun
{
public:
    using Task = std::function<void()>;
    using NumberedTask = std::function<void(std::size_t number)>;

    ComparisonRun(std::span<const SurveyedFile> files, int threads, const ComparisonCallbacks &callbacks);

    [[nodiscard]] const SurveyedFile &file(quint32 index) const;
    [[nodiscard]] bool isAbandoned() const;

    /// Number of files that a task may keep open at once.
    [[nodiscard]] std::size_t openFilesPerTask() const;

    /// Adds \a bytes to the total of the progress. Not thread-safe; call before runTasks().
    void addTotal(qint64 bytes);
    /// Reports progress by \a bytes.
    void addProgress(qint64 bytes);

    /// Adds a task. The task that was added last runs first, which keeps the queue short.
    void addTask(Task task);
    /// Adds \a count tasks, which start in the order of their numbers. The one that ends last calls
    /// \a continuation.
    void addTasks(std::size_t count, NumberedTask task, Task continuation);
    /// Runs all tasks, including those that tasks add, and blocks until they are done. Discards the remaining
    /// tasks once the run is abandoned.
    void runTasks();

    /// Adds a group to the result; ignores a single file.
    void addGroup(EqualFiles group);
    /// Adds an unreadable file to the result. It must not be in a group.
    void addUnreadable(quint32 index, const QString &reason);

    /// The result, sorted by the indexes of the files; empty if the run was abandoned. Call after runTasks().
    [[nodiscard]] ContentGroups takeResult();

private:
    const std::span<const SurveyedFile> m_files;
    const ComparisonCallbacks &m_callbacks;
    const std::size_t m_openFiles;
    const int m_threads;
    qint64 m_total = 0;
    std::atomic<qint64> m_done = 0;
    WorkQueue<Task> m_tasks;

    /// Protects the members below.
    QMutex m_mutex;
    std::vector<std::vector<quint32>> m_groups;
    std::vector<std::pair<quint32, QString>> m_unreadable;
};
