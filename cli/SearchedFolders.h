#pragma once

#include "scan/FileSurvey.h"

#include <QList>
#include <QString>
#include <QStringList>

/// The folders that are searched, each once: first the FOLDERs of the command line, then the reference
/// folders.
class SearchedFolders
{
public:
    SearchedFolders(const QStringList &folders, const QStringList &references);

    /// The folders as the user gave them, for SurveyRequest::folders.
    [[nodiscard]] QStringList given() const;
    /// The absolute paths of the folders, in the same order.
    [[nodiscard]] QStringList absolute() const;

    /// The absolute path of a file that was found in these folders.
    [[nodiscard]] QString absolutePath(const SurveyedFile &file) const;
    /// Whether the file is in a reference folder, even if it was found through another folder.
    [[nodiscard]] bool isReference(const SurveyedFile &file) const;

private:
    /// Each path ends with a slash.
    struct Folder
    {
        QString given;
        QString absolute;
        /// Without links; empty if the folder does not exist.
        QString canonical;
    };

    void add(const QString &folder);

    QList<Folder> m_folders;
    QStringList m_canonicalReferences;
    QStringList m_given;
};
