#pragma once

#include <atomic>
#include <memory>

/// Keeps every thread of the global pool busy, so that work handed to the pool waits until release().
class PoolHold
{
public:
    PoolHold();
    ~PoolHold();
    PoolHold(const PoolHold &) = delete;
    PoolHold &operator=(const PoolHold &) = delete;

    void release();

private:
    /// Shared with the waiting threads, which wake up when this may be gone already.
    std::shared_ptr<std::atomic<bool>> m_released;
};
