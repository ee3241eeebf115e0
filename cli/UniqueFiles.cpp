#include "cli/UniqueFiles.h"

#include "cli/PathOrder.h"

#include <QSet>

#include <algorithm>

namespace {

bool isNamedBefore(const SurveyedFile &a, const SurveyedFile &b)
{
    if (a.identity != b.identity)
        return a.identity < b.identity;
    if (a.folder != b.folder)
        return a.folder < b.folder;
    return comesBefore(a.path, b.path);
}

} // namespace

std::span<const SurveyedFile> UniqueFiles::furtherNamesOf(const SurveyedFile &file) const
{
    const auto names = std::ranges::equal_range(furtherNames, file.identity, {}, &SurveyedFile::identity);
    return {names.begin(), names.end()};
}

UniqueFiles uniteNames(std::vector<SurveyedFile> found, const SearchedFolders &folders)
{
    std::ranges::sort(found, isNamedBefore);
    UniqueFiles unique;
    // Of the file that the last one of unique.files is.
    QSet<QString> paths;
    for (auto file = found.begin(); file != found.end(); ++file) {
        const auto next = std::next(file);
        const bool isFurther = !unique.files.empty() && unique.files.back().identity == file->identity;
        const bool hasFurther = next != found.end() && next->identity == file->identity;
        if (!isFurther)
            paths.clear();
        // Most files have one name: no path is made for them.
        if (isFurther || hasFurther) {
            const QString path = folders.absolutePath(*file);
            if (paths.contains(path))
                continue;
            paths.insert(path);
        }
        (isFurther ? unique.furtherNames : unique.files).push_back(std::move(*file));
    }
    return unique;
}
