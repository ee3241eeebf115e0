#include "cli/JournalObjection.h"

#include "cli/FilePath.h"
#include "cli/HeldFile.h"

#include <QFileInfo>

#include <algorithm>

using Qt::StringLiterals::operator""_s;

namespace {

/// Identity of the file that \a path leads to. Follows links.
std::optional<FileIdentity> identityOfTarget(const QString &path)
{
    return identityAt(QFileInfo(asFilePath(path)).canonicalFilePath());
}

} // namespace

std::optional<QString> journalObjection(
    const QString &journal, const QString &reportFile, const Report &report)
{
    const auto identity = identityOfTarget(journal);
    if (!identity)
        return std::nullopt;
    if (!reportFile.isEmpty() && identity == identityOfTarget(reportFile))
        return u"it is the report"_s;
    const auto isJournal = [&](const ReportFile &file) { return identityAt(file.path) == identity; };
    const bool isListed = std::ranges::any_of(
        report.groups, [&](const ReportGroup &group) { return std::ranges::any_of(group.files, isJournal); });
    return isListed ? std::optional(u"it is a file of the report"_s) : std::nullopt;
}
