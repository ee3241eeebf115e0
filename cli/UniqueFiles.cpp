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
    const auto first = std::ranges::lower_bound(furtherNames, file.identity, {}, &SurveyedFile::identity);
    const auto end = std::ranges::upper_bound(furtherNames, file.identity, {}, &SurveyedFile::identity);
    return {first, end};
}

UniqueFiles uniteNames(std::vector<SurveyedFile> found, const SearchedFolders &folders)
{
    std::ranges::sort(found, isNamedBefore);
    UniqueFiles unique;
    // Works in place: a second list of a million files would double the memory.
    auto end = found.begin();
    // Paths to the file before end.
    QSet<QString> paths;
    for (auto file = found.begin(); file != found.end(); ++file) {
        const auto next = std::next(file);
        const bool isFurther = end != found.begin() && std::prev(end)->identity == file->identity;
        const bool hasFurther = next != found.end() && next->identity == file->identity;
        if (!isFurther)
            paths.clear();
        // Most files have one name. Their paths need not be built.
        if (isFurther || hasFurther) {
            const QString path = folders.absolutePath(*file);
            if (paths.contains(path))
                continue;
            paths.insert(path);
        }
        if (isFurther)
            unique.furtherNames.push_back(std::move(*file));
        else if (end++ != file)
            *std::prev(end) = std::move(*file);
    }
    found.erase(end, found.end());
    unique.files = std::move(found);
    return unique;
}
