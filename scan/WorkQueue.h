#pragma once

#include <QMutex>
#include <QMutexLocker>
#include <QThreadPool>
#include <QWaitCondition>

#include <iterator>
#include <optional>
#include <utility>
#include <vector>

/// A work queue for several threads, which take items from it and add items to it. Thread-safe.
template <typename Item>
class WorkQueue
{
public:
    explicit WorkQueue(std::vector<Item> items = {})
        : m_items(std::move(items))
        , m_unfinished(m_items.size())
    {
    }

    /// Adds an item. After the first take(), only a thread between take() and finish() may call this.
    void add(Item item)
    {
        const QMutexLocker lock(&m_mutex);
        m_items.push_back(std::move(item));
        ++m_unfinished;
        m_changed.wakeOne();
    }

    /// Removes and returns the item that was added last: last in, first out keeps the queue short. Blocks
    /// while the queue is empty but an unfinished item may still add items. Returns nothing once all items
    /// are finished.
    [[nodiscard]] std::optional<Item> take()
    {
        const QMutexLocker lock(&m_mutex);
        while (m_items.empty() && m_unfinished > 0)
            m_changed.wait(&m_mutex);
        if (m_items.empty())
            return std::nullopt;
        Item item = std::move(m_items.back());
        m_items.pop_back();
        return item;
    }

    /// Ends the work on an item that take() returned.
    void finish()
    {
        const QMutexLocker lock(&m_mutex);
        if (--m_unfinished == 0)
            m_changed.wakeAll();
    }

private:
    QMutex m_mutex;
    QWaitCondition m_changed;
    std::vector<Item> m_items;
    std::size_t m_unfinished;
};

/// Runs \a work on \a count new threads and waits for them. Not on the global pool: the work blocks on the
/// disk and would delay the pool's other users.
template <typename Work>
void runOnThreads(int count, const Work &work)
{
    QThreadPool threads;
    threads.setMaxThreadCount(count);
    for (int i = 0; i < count; ++i)
        threads.start([&work] { work(); });
    threads.waitForDone();
}
