#pragma once

#include "scan/FileSurvey.h"

#include <QList>
#include <QString>
#include <QStringList>

/// The folders that are searched: first those of the user's list, then the reference folders, each once.
class SearchedFolders
{
public:
    SearchedFolders(const QStringList &folders, const QStringList &references);

    /// As the user gave them, for SurveyRequest::folders.
    [[nodiscard]] QStringList given() const;
    /// The same folders in the same order.
    [[nodiscard]] QStringList absolute() const;

    /// The absolute path of a file that was found in these folders.
    [[nodiscard]] QString absolutePath(const SurveyedFile &file) const;
    /// Whether the file lies in a reference folder, whichever folder it was found in.
    [[nodiscard]] bool isReference(const SurveyedFile &file) const;

private:
    /// Paths with a slash at their ends.
    struct Folder
    {
        QString given;
        QString absolute;
        /// With all links resolved; empty when there is no such folder.
        QString canonical;
    };

    void add(const QString &folder);

    QList<Folder> m_folders;
    QStringList m_canonicalReferences;
    QStringList m_given;
};
