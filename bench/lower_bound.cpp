#include "bench/support/ParallelListing.h"

#include <openssl/evp.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

// A lower bound for the engine's time: the least work for the same result, with plain system calls on all
// cores. One walk, one statx() per file, and one open, two reads and a digest per file whose size is not
// unique. No order, no progress reports. Each core reads one file at a time; with a cold cache, the engine is
// faster, because it requests several files at once. Linux only.

namespace {

using Digest = std::array<unsigned char, 32>;

constexpr std::size_t sampleSize = 4096;

/// A file whose size is not unique.
struct Candidate
{
    const ListedFile *file;
    Digest digest{};
    bool opened = false;
};

/// SHA-256 that looks up its algorithm and allocates its context only once.
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

void fingerprint(Candidate &candidate, Hasher &hasher)
{
    const int descriptor = open(candidate.file->path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    // read() fills it. NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    std::array<char, 2 * sampleSize> buffer;
    ssize_t length = std::max<ssize_t>(0, read(descriptor, buffer.data(), sampleSize));
    if (const std::uint64_t size = candidate.file->size; size > 2 * sampleSize) {
        const ssize_t tail =
            pread(descriptor, buffer.data() + length, sampleSize, static_cast<off_t>(size - sampleSize));
        length += std::max<ssize_t>(0, tail);
    }
    close(descriptor);
    candidate.digest = hasher.hash(buffer.data(), static_cast<std::size_t>(length));
    candidate.opened = true;
}

/// Sorts \a files by size and returns those whose size is not unique.
std::vector<Candidate> candidatesOf(std::vector<ListedFile> &files)
{
    std::ranges::sort(files, {}, &ListedFile::size);
    std::vector<Candidate> candidates;
    for (std::size_t i = 0; i < files.size(); ++i) {
        const bool likePrevious = i > 0 && files[i - 1].size == files[i].size;
        const bool likeNext = i + 1 < files.size() && files[i + 1].size == files[i].size;
        if (likePrevious || likeNext)
            candidates.push_back({.file = &files[i]});
    }
    return candidates;
}

void fingerprintAll(std::vector<Candidate> &candidates)
{
    constexpr std::size_t filesAtOnce = 64;
    std::atomic<std::size_t> next = 0;
    onAllCores([&](unsigned int) {
        Hasher hasher;
        for (std::size_t first = next.fetch_add(filesAtOnce); first < candidates.size();
             first = next.fetch_add(filesAtOnce)) {
            const std::size_t end = std::min(candidates.size(), first + filesAtOnce);
            for (std::size_t i = first; i < end; ++i)
                fingerprint(candidates[i], hasher);
        }
    });
}

struct Answer
{
    std::size_t groups = 0;
    std::size_t duplicates = 0;
    /// Keeps the compiler from removing the choice of the kept file.
    std::size_t keptPathBytes = 0;
};

Answer group(std::vector<Candidate> &candidates)
{
    std::erase_if(candidates, [](const Candidate &candidate) { return !candidate.opened; });
    std::ranges::sort(candidates, {}, &Candidate::digest);
    const auto isOlder = [](const Candidate &a, const Candidate &b) {
        return a.file->created < b.file->created;
    };
    Answer answer;
    for (auto first = candidates.begin(); first != candidates.end();) {
        const auto end = std::find_if(first, candidates.end(),
            [&](const Candidate &candidate) { return candidate.digest != first->digest; });
        if (end - first >= 2) {
            ++answer.groups;
            answer.duplicates += static_cast<std::size_t>(end - first);
            answer.keptPathBytes += std::min_element(first, end, isOlder)->file->path.size();
        }
        first = end;
    }
    return answer;
}

bool checkFolders(const std::vector<std::string> &folders)
{
    if (folders.empty()) {
        std::fprintf(stderr, "lower_bound: name at least one folder to scan\n");
        return false;
    }
    for (const std::string &folder : folders) {
        DIR *const opened = opendir(folder.c_str());
        if (!opened) {
            std::fprintf(stderr, "lower_bound: %s is not a readable folder\n", folder.c_str());
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
    std::vector<ListedFile> files = listFiles(folders);
    const double walked = secondsSince(start);
    std::vector<Candidate> candidates = candidatesOf(files);
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
