#pragma once

#include <QMutex>
#include <QMutexLocker>
#include <QThreadPool>
#include <QWaitCondition>

#include <iterator>
#include <optional>
#include <utility>
#include <vector>

/// Items of work that several threads take from and add to. Any thread.
template <typename Item>
class WorkStock
{
public:
    explicit WorkStock(std::vector<Item> items = {})
        : m_items(std::move(items))
        , m_unfinished(m_items.size())
    {
    }

    /// Adds work. Once the threads have begun, only between take() and finish().
    void add(Item item)
    {
        const QMutexLocker lock(&m_mutex);
        m_items.push_back(std::move(item));
        ++m_unfinished;
        m_changed.wakeOne();
    }

    /// The item that was added last, which keeps the stock small; nothing when all are finished. Waits while
    /// an unfinished item may still add some.
    std::optional<Item> take()
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

    /// Marks an item that was taken as finished.
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

/// Runs \a work on \a count threads of its own and waits for them. The global pool's other users would wait
/// for as long as the disk takes.
template <typename Work>
void runOnThreads(int count, const Work &work)
{
    QThreadPool threads;
    threads.setMaxThreadCount(count);
    for (int i = 0; i < count; ++i)
        threads.start([&work] { work(); });
    threads.waitForDone();
}
