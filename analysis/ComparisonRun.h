#pragma once

#include "analysis/Candidates.h"
#include "analysis/ContentGroups.h"
#include "scan/WorkStock.h"

#include <QMutex>

#include <atomic>
#include <functional>
#include <span>
#include <vector>

/// What the threads of one comparison share. Any thread.
class ComparisonRun
{
public:
    using Task = std::function<void()>;

    ComparisonRun(std::span<const SurveyedFile> files, int threads, const ComparisonCallbacks &callbacks);

    [[nodiscard]] const SurveyedFile &file(quint32 index) const;
    [[nodiscard]] bool isAbandoned() const;

    /// How many threads work.
    [[nodiscard]] int threads() const;
    /// How many files a task may hold open.
    [[nodiscard]] std::size_t openFilesPerTask() const;

    /// Adds to the bytes that the progress is measured by; before the tasks run.
    void addTotal(qint64 bytes);
    /// Counts bytes as dealt with.
    void addProgress(qint64 bytes);

    /// Adds work. The task that was added last is taken first, which keeps their number small.
    void addTask(Task task);
    /// Adds \a count tasks, which are taken in the order of their numbers. The last one to end goes on with
    /// \a continuation.
    void addTasks(std::size_t count, std::function<void(std::size_t number)> task, Task continuation);
    /// Runs all tasks, and those that they add; does nothing for the rest once the run is abandoned.
    void runTasks();

    /// Adds a group of the result; a single file is none.
    void addGroup(EqualFiles group);
    /// Reports a file, which must not be in a group.
    void addUnreadable(quint32 index, const QString &reason);

    /// Groups and files in the order of the files' indexes.
    [[nodiscard]] ContentGroups takeResult();

private:
    const std::span<const SurveyedFile> m_files;
    const ComparisonCallbacks &m_callbacks;
    const std::size_t m_openFiles;
    const int m_threads;
    qint64 m_total = 0;
    std::atomic<qint64> m_done = 0;
    WorkStock<Task> m_tasks;

    /// Protects what follows.
    QMutex m_mutex;
    std::vector<std::vector<quint32>> m_groups;
    std::vector<std::pair<quint32, QString>> m_unreadable;
};
