#pragma once

#include "cli/Report.h"
#include "scan/FileSurvey.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <optional>
#include <set>

/// The files of a report that are never acted on: kept files, references, and paths that have an action other
/// than `remove` anywhere in the report.
///
/// A report may be edited by hand. It can keep a path in one group and mark it in another, in two spellings
/// or through a folder that is a link. Therefore paths are normalised before they are compared, and files are
/// compared by their identity.
class ProtectedFiles
{
public:
    /// Reads the identity of each kept file and each reference from the file system.
    explicit ProtectedFiles(const Report &report);

    /// Why the file at \a path is protected; nothing if it is not.
    [[nodiscard]] std::optional<QString> objection(const QString &path) const;
    /// Why all names of a file are protected; nothing if they are not.
    [[nodiscard]] std::optional<QString> objection(const FileIdentity &identity) const;

private:
    void protect(const ReportFile &file, FileAction action);

    /// By normalised path.
    QHash<QString, FileAction> m_actions;
    std::set<FileIdentity> m_kept;
    std::set<FileIdentity> m_references;
};

/// \a path without ".", ".." and repeated slashes, for comparing paths.
[[nodiscard]] QString normalisedPath(const QString &path);
