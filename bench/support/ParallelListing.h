#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

// Lists files on all cores with plain system calls, without the engine. Linux only.

/// A file as the system describes it.
struct ListedFile
{
    std::string path;
    /// Bytes.
    std::uint64_t size = 0;
    /// Nanoseconds since 1970-01-01 UTC; the modification time where there is no creation time.
    std::int64_t created = 0;
};

[[nodiscard]] inline unsigned int threadCount()
{
    return std::max(1U, std::thread::hardware_concurrency());
}

/// Calls \a work with the numbers from 0 to threadCount() - 1, each on its own thread, and waits.
template <typename Work>
void onAllCores(Work work)
{
    std::vector<std::jthread> threads;
    for (unsigned int i = 0; i < threadCount(); ++i)
        threads.emplace_back([&work, i] { work(i); });
}

/// The regular files below \a folders, without hidden files and folders, in no particular order. Does not
/// follow links. Skips what it cannot read.
[[nodiscard]] std::vector<ListedFile> listFiles(const std::vector<std::string> &folders);
