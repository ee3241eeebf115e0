#include "cli/SearchedFolders.h"

#include "cli/FilePath.h"
#include "scan/FolderEntries.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

QString absoluteFolder(const QString &given)
{
    const QString absolute = QDir::cleanPath(QDir::current().absoluteFilePath(given));
    // After a link, ".." leads to the parent of its target, which the text of the path does not show.
    const QString canonical = QFileInfo(given).canonicalFilePath();
    return canonical.isEmpty() || QFileInfo(absolute).canonicalFilePath() == canonical ? absolute : canonical;
}

/// \a path with its beginning \a replaced replaced by \a prefix.
QString withPrefix(const QString &prefix, QStringView path, const QString &replaced)
{
    QString result;
    result.reserve(prefix.size() + path.size() - replaced.size());
    result.append(prefix);
    result.append(path.sliced(replaced.size()));
    return result;
}

} // namespace

SearchedFolders::SearchedFolders(const QStringList &folders, const QStringList &references)
{
    for (const QString &folder : folders + references)
        add(folder);
    for (const QString &folder : references) {
        const QString canonical = QFileInfo(asFilePath(folder)).canonicalFilePath();
        if (!canonical.isEmpty())
            m_canonicalReferences.append(withSlash(canonical));
    }
}

void SearchedFolders::add(const QString &folder)
{
    const QString path = asFilePath(folder);
    const QString absolute = withSlash(absoluteFolder(path));
    const auto isSame = [&](const Folder &other) { return other.absolute == absolute; };
    if (std::ranges::any_of(m_folders, isSame))
        return;
    const QString canonical = withSlash(QFileInfo(path).canonicalFilePath());
    m_folders.append({withSlash(folder), absolute, canonical});
    m_given.append(folder);
}

QStringList SearchedFolders::given() const
{
    return m_given;
}

QStringList SearchedFolders::absolute() const
{
    QStringList paths;
    for (const Folder &folder : m_folders)
        paths.append(QDir(folder.absolute).isRoot() ? folder.absolute : folder.absolute.chopped(1));
    return paths;
}

QString SearchedFolders::absolutePath(const SurveyedFile &file) const
{
    const Folder &folder = m_folders[file.folder];
    return withPrefix(folder.absolute, file.path, folder.given);
}

bool SearchedFolders::isReference(const SurveyedFile &file) const
{
    if (m_canonicalReferences.isEmpty())
        return false;
    const Folder &folder = m_folders[file.folder];
    const QString canonical = withPrefix(folder.canonical, file.path, folder.given);
    return std::ranges::any_of(
        m_canonicalReferences, [&](const QString &reference) { return canonical.startsWith(reference); });
}
