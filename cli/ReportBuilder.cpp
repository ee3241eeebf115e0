#include "cli/ReportBuilder.h"

#include "cli/PathOrder.h"

#include <algorithm>
#include <span>
#include <tuple>
#include <utility>

namespace {

/// A path of a group, and the facts that decide its action.
struct Candidate
{
    const SurveyedFile *file = nullptr;
    bool isReference = false;
    QString absolutePath;
    /// From the keep rule: the file with the smallest rank is kept.
    qint64 rank = 0;
};

qint64 rankOf(const Candidate &candidate, KeepRule rule)
{
    switch (rule) {
    case KeepRule::Oldest:
        return candidate.file->created;
    case KeepRule::Newest:
        return -candidate.file->created;
    case KeepRule::Shortest:
        return utf8Size(candidate.absolutePath);
    case KeepRule::First:
        break;
    }
    return 0;
}

/// Reference files first, then by the keep rule, then by folder and path.
bool isBetterKept(const Candidate &a, const Candidate &b)
{
    const auto facts = [](const Candidate &candidate) {
        return std::tuple(!candidate.isReference, candidate.rank, candidate.file->folder);
    };
    return facts(a) != facts(b) ? facts(a) < facts(b) : comesBefore(a.absolutePath, b.absolutePath);
}

ReportFile reportFile(const Candidate &candidate, FileAction action, PathForm form)
{
    const SurveyedFile &file = *candidate.file;
    return {.action = action,
        .device = file.identity.device,
        .inode = file.identity.inode,
        .links = file.links,
        .modified = file.modified,
        .path = form == PathForm::Absolute ? candidate.absolutePath : file.path};
}

class GroupBuilder
{
public:
    GroupBuilder(const UniqueFiles &unique, const SearchedFolders &folders, KeepRule rule, PathForm form)
        : m_unique(unique)
        , m_folders(folders)
        , m_rule(rule)
        , m_form(form)
    {
    }

    [[nodiscard]] ReportGroup build(const std::vector<quint32> &members) const
    {
        std::vector<std::vector<Candidate>> candidates;
        candidates.reserve(members.size());
        for (const quint32 member : members)
            candidates.push_back(namesOf(m_unique.files[member]));
        std::ranges::sort(candidates, isBetterKept,
            [](const std::vector<Candidate> &names) -> const Candidate & { return names.front(); });

        ReportGroup group;
        group.size = m_unique.files[members.front()].size;
        for (const std::vector<Candidate> &names : candidates) {
            const Candidate &listed = names.front();
            const FileAction ofOthers = listed.isReference ? FileAction::Reference : FileAction::Remove;
            group.files.append(
                reportFile(listed, group.files.isEmpty() ? FileAction::Keep : ofOthers, m_form));
            for (const Candidate &further : std::span(names).subspan(1))
                group.files.append(reportFile(further, FileAction::Link, m_form));
        }
        std::sort(group.files.begin() + 1, group.files.end(),
            [](const ReportFile &a, const ReportFile &b) { return comesBefore(a.path, b.path); });
        return group;
    }

private:
    /// All names of a file. The first is not listed as a link.
    [[nodiscard]] std::vector<Candidate> namesOf(const SurveyedFile &file) const
    {
        std::vector<Candidate> names{candidate(file)};
        for (const SurveyedFile &further : m_unique.furtherNamesOf(file))
            names.push_back(candidate(further));
        std::ranges::sort(names, isBetterKept);
        return names;
    }

    [[nodiscard]] Candidate candidate(const SurveyedFile &file) const
    {
        Candidate result{&file, m_folders.isReference(file), m_folders.absolutePath(file)};
        result.rank = rankOf(result, m_rule);
        return result;
    }

    const UniqueFiles &m_unique;
    const SearchedFolders &m_folders;
    const KeepRule m_rule;
    const PathForm m_form;
};

} // namespace

Removable removableIn(const ReportGroup &group)
{
    Removable removable;
    for (const ReportFile &file : group.files) {
        if (file.action != FileAction::Remove)
            continue;
        ++removable.files;
        removable.bytes += group.size;
        removable.filesWithFurtherNames += file.links > 1 ? 1 : 0;
    }
    return removable;
}

Removable removableIn(const QList<ReportGroup> &groups)
{
    Removable sum;
    for (const ReportGroup &group : groups) {
        const Removable removable = removableIn(group);
        sum.files += removable.files;
        sum.bytes += removable.bytes;
        sum.filesWithFurtherNames += removable.filesWithFurtherNames;
    }
    return sum;
}

QList<ReportGroup> reportGroups(const std::vector<std::vector<quint32>> &groups, const UniqueFiles &unique,
    const SearchedFolders &folders, KeepRule rule, PathForm form)
{
    const GroupBuilder builder(unique, folders, rule, form);
    struct Weighed
    {
        qint64 freedBytes = 0;
        ReportGroup group;
    };
    std::vector<Weighed> weighed;
    weighed.reserve(groups.size());
    for (const std::vector<quint32> &members : groups) {
        ReportGroup group = builder.build(members);
        weighed.push_back({removableIn(group).bytes, std::move(group)});
    }
    std::ranges::sort(weighed, [](const Weighed &a, const Weighed &b) {
        return a.freedBytes != b.freedBytes
                   ? a.freedBytes > b.freedBytes
                   : comesBefore(a.group.files.constFirst().path, b.group.files.constFirst().path);
    });
    QList<ReportGroup> result;
    result.reserve(static_cast<qsizetype>(weighed.size()));
    for (Weighed &entry : weighed)
        result.append(std::move(entry.group));
    return result;
}
