#include <openssl/evp.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// The least that any program must do to give the engine's answer: one walk, one statx per file, and for the
// files that share their size one open, two reads and a digest. Plain system calls on all cores, no order to
// keep, nothing to report, nobody to hand the result to. One file after the other: on a cold disk, who asks
// for several at once is faster. Linux only.

namespace {

using Digest = std::array<unsigned char, 32>;

constexpr std::size_t sampleSize = 4096;

struct File
{
    std::string path;
    std::uint64_t size = 0;
    /// Birth time, or modification time where there is none, in nanoseconds.
    std::int64_t created = 0;
    Digest digest{};
    bool opened = false;
};

unsigned int threadCount()
{
    return std::max(1U, std::thread::hardware_concurrency());
}

template <typename Work>
void onAllCores(Work work)
{
    std::vector<std::jthread> threads;
    for (unsigned int i = 0; i < threadCount(); ++i)
        threads.emplace_back([&work, i] { work(i); });
}

/// A stock of folders that several threads take from and add to.
class FolderStock
{
public:
    void add(std::string folder)
    {
        const std::scoped_lock lock(m_mutex);
        m_folders.push_back(std::move(folder));
        ++m_unfinished;
        m_changed.notify_one();
    }

    /// False when every folder that was ever added is finished.
    bool take(std::string &folder)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return !m_folders.empty() || m_unfinished == 0; });
        if (m_folders.empty())
            return false;
        folder = std::move(m_folders.back());
        m_folders.pop_back();
        return true;
    }

    void finish()
    {
        const std::scoped_lock lock(m_mutex);
        if (--m_unfinished == 0)
            m_changed.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<std::string> m_folders;
    std::size_t m_unfinished = 0;
};

File describe(int folder, const char *name, std::string path)
{
    File file;
    file.path = std::move(path);
    struct statx facts = {};
    if (statx(folder, name, AT_SYMLINK_NOFOLLOW, STATX_SIZE | STATX_MTIME | STATX_BTIME, &facts) == 0) {
        file.size = facts.stx_size;
        const statx_timestamp time = (facts.stx_mask & STATX_BTIME) != 0 ? facts.stx_btime : facts.stx_mtime;
        file.created = time.tv_sec * 1'000'000'000 + time.tv_nsec;
    }
    return file;
}

bool isFolder(int folder, const dirent &entry)
{
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    struct stat facts = {};
    return fstatat(folder, entry.d_name, &facts, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(facts.st_mode);
}

void listFolder(const std::string &path, FolderStock &stock, std::vector<File> &files)
{
    DIR *const folder = opendir(path.c_str());
    if (!folder)
        return;
    while (const dirent *const entry = readdir(folder)) {
        if (entry->d_name[0] == '.')
            continue;
        std::string child = path + '/' + entry->d_name;
        if (isFolder(dirfd(folder), *entry))
            stock.add(std::move(child));
        else if (entry->d_type == DT_REG)
            files.push_back(describe(dirfd(folder), entry->d_name, std::move(child)));
    }
    closedir(folder);
}

std::vector<File> collect(const std::vector<std::string> &folders)
{
    FolderStock stock;
    for (const std::string &folder : folders)
        stock.add(folder);
    std::vector<std::vector<File>> perThread(threadCount());
    onAllCores([&](unsigned int thread) {
        std::string folder;
        while (stock.take(folder)) {
            listFolder(folder, stock, perThread[thread]);
            stock.finish();
        }
    });
    std::vector<File> files;
    for (std::vector<File> &some : perThread)
        std::move(some.begin(), some.end(), std::back_inserter(files));
    return files;
}

/// SHA-256 without a look-up or an allocation per digest.
class Hasher
{
public:
    Digest hash(const char *data, std::size_t size)
    {
        Digest digest;
        EVP_DigestInit_ex2(m_context.get(), m_algorithm.get(), nullptr);
        EVP_DigestUpdate(m_context.get(), data, size);
        EVP_DigestFinal_ex(m_context.get(), digest.data(), nullptr);
        return digest;
    }

private:
    struct Free
    {
        void operator()(EVP_MD *algorithm) const
        {
            EVP_MD_free(algorithm);
        }
        void operator()(EVP_MD_CTX *context) const
        {
            EVP_MD_CTX_free(context);
        }
    };

    std::unique_ptr<EVP_MD, Free> m_algorithm{EVP_MD_fetch(nullptr, "SHA256", nullptr)};
    std::unique_ptr<EVP_MD_CTX, Free> m_context{EVP_MD_CTX_new()};
};

void fingerprint(File &file, Hasher &hasher)
{
    const int descriptor = open(file.path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    // read() fills it. NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    std::array<char, 2 * sampleSize> buffer;
    ssize_t length = std::max<ssize_t>(0, read(descriptor, buffer.data(), sampleSize));
    if (file.size > 2 * sampleSize) {
        const ssize_t tail =
            pread(descriptor, buffer.data() + length, sampleSize, static_cast<off_t>(file.size - sampleSize));
        length += std::max<ssize_t>(0, tail);
    }
    close(descriptor);
    file.digest = hasher.hash(buffer.data(), static_cast<std::size_t>(length));
    file.opened = true;
}

/// The files that share their size with another.
std::vector<File *> candidatesOf(std::vector<File> &files)
{
    std::sort(files.begin(), files.end(), [](const File &a, const File &b) { return a.size < b.size; });
    std::vector<File *> candidates;
    for (std::size_t i = 0; i < files.size(); ++i) {
        const bool likePrevious = i > 0 && files[i - 1].size == files[i].size;
        const bool likeNext = i + 1 < files.size() && files[i + 1].size == files[i].size;
        if (likePrevious || likeNext)
            candidates.push_back(&files[i]);
    }
    return candidates;
}

void fingerprintAll(const std::vector<File *> &candidates)
{
    constexpr std::size_t filesAtOnce = 64;
    std::atomic<std::size_t> next = 0;
    onAllCores([&](unsigned int) {
        Hasher hasher;
        for (std::size_t first = next.fetch_add(filesAtOnce); first < candidates.size();
             first = next.fetch_add(filesAtOnce)) {
            const std::size_t end = std::min(candidates.size(), first + filesAtOnce);
            for (std::size_t i = first; i < end; ++i)
                fingerprint(*candidates[i], hasher);
        }
    });
}

struct Answer
{
    std::size_t groups = 0;
    std::size_t duplicates = 0;
    /// Stands for the decision which copy of each group to keep, so that it cannot be optimised away.
    std::size_t keptPathBytes = 0;
};

Answer group(std::vector<File *> &candidates)
{
    std::erase_if(candidates, [](const File *file) { return !file->opened; });
    std::sort(candidates.begin(), candidates.end(),
        [](const File *a, const File *b) { return a->digest < b->digest; });
    Answer answer;
    const auto isOlder = [](const File *a, const File *b) { return a->created < b->created; };
    for (auto first = candidates.begin(); first != candidates.end();) {
        const auto end = std::find_if(
            first, candidates.end(), [&](const File *file) { return file->digest != (*first)->digest; });
        if (end - first >= 2) {
            ++answer.groups;
            answer.duplicates += static_cast<std::size_t>(end - first);
            answer.keptPathBytes += (*std::min_element(first, end, isOlder))->path.size();
        }
        first = end;
    }
    return answer;
}

bool checkFolders(const std::vector<std::string> &folders)
{
    if (folders.empty()) {
        std::fprintf(stderr, "floor: name at least one folder to scan\n");
        return false;
    }
    for (const std::string &folder : folders) {
        DIR *const opened = opendir(folder.c_str());
        if (!opened) {
            std::fprintf(stderr, "floor: %s is not a readable folder\n", folder.c_str());
            return false;
        }
        closedir(opened);
    }
    return true;
}

double secondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

int main(int argc, char *argv[])
{
    const std::vector<std::string> folders(argv + 1, argv + argc);
    if (!checkFolders(folders))
        return 2;

    const auto start = std::chrono::steady_clock::now();
    std::vector<File> files = collect(folders);
    const double walked = secondsSince(start);
    std::vector<File *> candidates = candidatesOf(files);
    const std::size_t candidateCount = candidates.size();
    fingerprintAll(candidates);
    const double fingerprinted = secondsSince(start);
    const Answer answer = group(candidates);
    const double whole = secondsSince(start);

    std::printf("files      %zu\ncandidates %zu\ngroups     %zu\nduplicates %zu\n", files.size(),
        candidateCount, answer.groups, answer.duplicates);
    std::printf("walk         %8.3f s\nfingerprints %8.3f s\ngroups       %8.3f s\nwhole        %8.3f s\n",
        walked, fingerprinted - walked, whole - fingerprinted, whole);
    return answer.groups > 0 && answer.keptPathBytes == 0 ? 1 : 0;
}
