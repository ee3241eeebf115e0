#include "analysis/SizeClasses.h"

#include "analysis/PoolThreadRelease.h"
#include "analysis/RegularFile.h"

#include <QThreadPool>
#include <QtConcurrentMap>

#include <algorithm>
#include <iterator>

namespace {

struct SizedFile
{
    const QString *path;
    qint64 size = 0;
};

/// The files at \a paths in ascending order of size. The pointers in the result point into \a paths.
std::vector<SizedFile> sortedBySize(const QList<QString> &paths, const std::function<bool()> &abandoned)
{
    std::vector<SizedFile> files;
    files.reserve(static_cast<std::size_t>(paths.size()));
    for (const QString &path : paths)
        files.push_back({&path});
    const auto askForSize = [&abandoned](SizedFile &file) {
        if (!abandoned())
            file.size = fileSize(*file.path);
    };
    QFuture<void> sizes =
        QtConcurrent::map(QThreadPool::globalInstance(), files.begin(), files.end(), askForSize);
    waitReleasingPoolThread(sizes);
    std::stable_sort(
        files.begin(), files.end(), [](const SizedFile &a, const SizedFile &b) { return a.size < b.size; });
    return files;
}

} // namespace

SizeClasses splitBySize(const QList<QString> &paths, const std::function<bool()> &abandoned)
{
    const std::vector<SizedFile> files = sortedBySize(paths, abandoned);
    SizeClasses classes;
    for (auto first = files.cbegin(); first != files.cend();) {
        const auto last = std::find_if(
            first, files.cend(), [size = first->size](const SizedFile &file) { return file.size != size; });
        classes.counts.push_back(last - first);
        if (last - first >= 2) {
            std::transform(first, last, std::back_inserter(classes.candidates),
                [](const SizedFile &file) { return *file.path; });
        }
        first = last;
    }
    return classes;
}
