#pragma once

#include "cli/Report.h"
#include "scan/FileSurvey.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <optional>
#include <set>

/// The files of a report that are never acted on: kept files, references, and paths with another action than
/// `remove` anywhere in the report.
///
/// A report may be edited by hand. It can keep a path in one group and mark it in another, in two spellings,
/// or through a folder that is a link. That is why paths are compared after normalisation, and files by
/// their identity.
class ProtectedFiles
{
public:
    /// Looks up the identity of each kept file and each reference.
    explicit ProtectedFiles(const Report &report);

    /// Why the file at \a path is not acted on.
    [[nodiscard]] std::optional<QString> objection(const QString &path) const;
    /// Why no name of the file is acted on.
    [[nodiscard]] std::optional<QString> objection(const FileIdentity &identity) const;

    [[nodiscard]] bool isKept(const FileIdentity &identity) const
    {
        return m_kept.contains(identity);
    }

private:
    void protect(const ReportFile &file, FileAction action);

    QHash<QString, FileAction> m_actions;
    std::set<FileIdentity> m_kept;
    std::set<FileIdentity> m_references;
};

/// \a path without "." and "..", and without repeated slashes: the key by which paths are compared.
[[nodiscard]] QString normalisedPath(const QString &path);
