#include "bench/support/ParallelListing.h"

#include <condition_variable>
#include <iterator>
#include <mutex>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

/// A queue of folders that several threads take from and add to.
class FolderQueue
{
public:
    void add(std::string folder)
    {
        const std::scoped_lock lock(m_mutex);
        m_folders.push_back(std::move(folder));
        ++m_unfinished;
        m_changed.notify_one();
    }

    /// Waits for a folder; false when all folders are finished.
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

    /// Marks a folder that was taken as finished.
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

ListedFile describe(int folder, const char *name, std::string path)
{
    ListedFile file{.path = std::move(path)};
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

void listFolder(const std::string &path, FolderQueue &queue, std::vector<ListedFile> &files)
{
    DIR *const folder = opendir(path.c_str());
    if (!folder)
        return;
    while (const dirent *const entry = readdir(folder)) {
        if (entry->d_name[0] == '.')
            continue;
        std::string child = path + '/' + entry->d_name;
        if (isFolder(dirfd(folder), *entry))
            queue.add(std::move(child));
        else if (entry->d_type == DT_REG)
            files.push_back(describe(dirfd(folder), entry->d_name, std::move(child)));
    }
    closedir(folder);
}

} // namespace

std::vector<ListedFile> listFiles(const std::vector<std::string> &folders)
{
    FolderQueue queue;
    for (const std::string &folder : folders)
        queue.add(folder);
    std::vector<std::vector<ListedFile>> perThread(threadCount());
    onAllCores([&](unsigned int thread) {
        std::string folder;
        while (queue.take(folder)) {
            listFolder(folder, queue, perThread[thread]);
            queue.finish();
        }
    });
    std::vector<ListedFile> files;
    for (std::vector<ListedFile> &part : perThread)
        std::move(part.begin(), part.end(), std::back_inserter(files));
    return files;
}
