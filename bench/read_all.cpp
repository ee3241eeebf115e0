#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

// Reads every file below the given folders once, on all cores, and discards the bytes: a lower bound for
// programs that read whole files. Linux only.

namespace {

/// Bytes. Fits into the second-level cache; smaller and larger blocks are slower.
constexpr std::size_t blockSize = std::size_t(256) * 1024;

std::vector<std::string> filesBelow(const std::vector<std::string> &folders)
{
    std::vector<std::string> files;
    for (const std::string &folder : folders) {
        for (const auto &entry : std::filesystem::recursive_directory_iterator(folder)) {
            if (!entry.is_symlink() && entry.is_regular_file())
                files.push_back(entry.path().string());
        }
    }
    return files;
}

std::int64_t readFile(const std::string &path, std::vector<char> &block)
{
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return 0;
    posix_fadvise(file, 0, 0, POSIX_FADV_SEQUENTIAL);
    std::int64_t bytes = 0;
    for (ssize_t got = 1; got > 0; bytes += got)
        got = std::max<ssize_t>(0, read(file, block.data(), block.size()));
    close(file);
    return bytes;
}

} // namespace

int main(int argc, char *argv[])
{
    const std::vector<std::string> files = filesBelow({argv + 1, argv + argc});
    const auto start = std::chrono::steady_clock::now();
    std::atomic<std::size_t> next = 0;
    std::atomic<std::int64_t> bytes = 0;
    {
        std::vector<std::jthread> threads;
        for (unsigned int i = 0; i < std::max(1U, std::thread::hardware_concurrency()); ++i) {
            threads.emplace_back([&] {
                std::vector<char> block(blockSize);
                for (std::size_t file = next++; file < files.size(); file = next++)
                    bytes += readFile(files[file], block);
            });
        }
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("files %zu\nbytes %lld\nread  %.3f s\n", files.size(), static_cast<long long>(bytes.load()),
        seconds.count());
    return 0;
}
