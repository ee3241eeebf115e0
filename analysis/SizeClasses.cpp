#include "analysis/SizeClasses.h"

#include "analysis/PoolThreadRelease.h"

#include <QThreadPool>
#include <QtConcurrentMap>

#include <algorithm>
#include <iterator>
#include <span>

#ifdef Q_OS_UNIX
#include <QFile>

#include <sys/stat.h>
#else
#include <QFileInfo>
#endif

namespace {

struct SizedFile
{
    const QString *path;
    qint64 size = 0;
};

/// The size in bytes of the file at \a path; 0 if it is gone. The same as QFileInfo::size().
qint64 sizeOf(const QString &path)
{
#ifdef Q_OS_UNIX
    // Saves the allocation of a QFileInfo for each file.
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_size : 0;
#else
    return QFileInfo(path).size();
#endif
}

/// The files at \a paths in ascending order of size. The pointers in the result point into \a paths.
std::vector<SizedFile> sortedBySize(const QStringList &paths, const AbandonCheck &abandoned)
{
    std::vector<SizedFile> files;
    files.reserve(static_cast<std::size_t>(paths.size()));
    for (const QString &path : paths)
        files.push_back({&path});
    const auto readSize = [&abandoned](SizedFile &file) {
        if (!abandoned())
            file.size = sizeOf(*file.path);
    };
    QFuture<void> sizes =
        QtConcurrent::map(QThreadPool::globalInstance(), files.begin(), files.end(), readSize);
    waitReleasingPoolThread(sizes);
    std::ranges::stable_sort(files, {}, &SizedFile::size);
    return files;
}

} // namespace

std::optional<SizeClasses> splitBySize(const QStringList &paths, const AbandonCheck &abandoned)
{
    const std::vector<SizedFile> files = sortedBySize(paths, abandoned);
    if (abandoned())
        return std::nullopt;
    SizeClasses result;
    for (std::span<const SizedFile> rest(files); !rest.empty();) {
        const auto isLarger = [size = rest.front().size](const SizedFile &file) { return file.size > size; };
        const auto end = std::ranges::find_if(rest, isLarger);
        const std::span<const SizedFile> sameSize = rest.first(static_cast<std::size_t>(end - rest.begin()));
        if (sameSize.size() >= 2) {
            const qsizetype smallerFiles = std::ssize(files) - std::ssize(rest);
            result.classes.push_back({result.candidates.size(), std::ssize(sameSize), smallerFiles});
            for (const SizedFile &file : sameSize)
                result.candidates.append(*file.path);
        }
        rest = rest.subspan(sameSize.size());
    }
    return result;
}
