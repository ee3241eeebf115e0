#include "cli/ProtectedFiles.h"

#include "cli/HeldFile.h"

#include <QDir>

using Qt::StringLiterals::operator""_s;

ProtectedFiles::ProtectedFiles(const Report &report)
{
    for (const ReportGroup &group : report.groups) {
        for (qsizetype i = 0; i < group.files.size(); ++i) {
            const ReportFile &file = group.files.at(i);
            if (i == group.kept)
                protect(file, FileAction::Keep);
            else if (file.action != FileAction::Remove)
                protect(file, file.action);
        }
    }
}

std::optional<QString> ProtectedFiles::objection(const QString &path) const
{
    const auto entry = m_actions.constFind(normalisedPath(path));
    if (entry == m_actions.constEnd())
        return std::nullopt;
    switch (*entry) {
    case FileAction::Keep:
        return u"the report keeps it"_s;
    case FileAction::Reference:
        return u"the report lists it as a reference"_s;
    default:
        return u"the report lists it as a link"_s;
    }
}

std::optional<QString> ProtectedFiles::objection(const FileIdentity &identity) const
{
    if (m_kept.contains(identity))
        return u"it is the same file as a kept one"_s;
    if (m_references.contains(identity))
        return u"it is the same file as a reference"_s;
    return std::nullopt;
}

void ProtectedFiles::protect(const ReportFile &file, FileAction action)
{
    const QString path = normalisedPath(file.path);
    if (action == FileAction::Link) {
        if (!m_actions.contains(path))
            m_actions.insert(path, action);
        return;
    }
    m_actions.insert(path, action);
    if (const auto identity = identityAt(file.path))
        (action == FileAction::Keep ? m_kept : m_references).insert(*identity);
}

QString normalisedPath(const QString &path)
{
    return QDir::cleanPath(QDir::fromNativeSeparators(path));
}
