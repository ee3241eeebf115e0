#include "scan/SkipRules.h"

#include "scan/FolderEntries.h"

#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

QStringList skippedLocations(const ScanOptions &options, const QString &desktopFolder)
{
    QStringList locations;
    if (options.skipSystem)
        locations.append(QStringLiteral("C:/Windows"));
    if (options.skipApps)
        locations.append({QStringLiteral("C:/Program Files"), QStringLiteral("C:/Program Files (x86)")});
    if (options.skipDesktop)
        locations.append(desktopFolder);
    return locations;
}

bool isSkippedLocation(const QString &canonicalPath, const QStringList &locations)
{
    // The file is gone: no rule applies.
    if (canonicalPath.isEmpty())
        return false;
    return std::any_of(locations.begin(), locations.end(), [&canonicalPath](const QString &location) {
        return canonicalPath.startsWith(location, Qt::CaseInsensitive);
    });
}

namespace {

QString canonicalPathWithSlash(const QString &folder)
{
    return withSlash(QFileInfo(folder).canonicalFilePath());
}

} // namespace

SkipRules::SkipRules(const ScanOptions &options, const QStringList &folders)
    : m_locations(
          skippedLocations(options, QStandardPaths::writableLocation(QStandardPaths::DesktopLocation)))
    , m_skipsHidden(options.skipHiddenFolders)
{
    if (!m_locations.isEmpty()) {
        for (const QString &folder : folders)
            m_beginnings.append({withSlash(folder), canonicalPathWithSlash(folder)});
    }
    std::stable_sort(m_beginnings.begin(), m_beginnings.end(),
        [](const Folder &a, const Folder &b) { return a.path.size() > b.path.size(); });
}

bool SkipRules::skip(const QString &path)
{
    return (!m_locations.isEmpty() && skipLocation(path)) || (m_skipsHidden && QFileInfo(path).isHidden());
}

bool SkipRules::skipLocation(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    if (const QStringView folder = QStringView(path).left(slash + 1); folder != m_folder.path)
        enter(folder.toString());
    return m_skipsFolder ||
           (m_dependsOnName && isSkippedLocation(m_folder.canonicalPath + path.mid(slash + 1), m_locations));
}

QString SkipRules::canonicalPathOf(const QString &folder) const
{
    const auto beginning = std::find_if(m_beginnings.cbegin(), m_beginnings.cend(),
        [&folder](const Folder &candidate) { return folder.startsWith(candidate.path); });
    if (beginning == m_beginnings.cend())
        return canonicalPathWithSlash(folder);
    return beginning->canonicalPath.isEmpty()
               ? QString()
               : beginning->canonicalPath + folder.sliced(beginning->path.size());
}

void SkipRules::enter(const QString &folder)
{
    m_folder = {folder, canonicalPathOf(folder)};
    const QString &canonicalPath = m_folder.canonicalPath;
    m_skipsFolder = isSkippedLocation(canonicalPath, m_locations);
    m_dependsOnName = !canonicalPath.isEmpty() &&
                      std::any_of(m_locations.begin(), m_locations.end(), [&](const QString &location) {
                          return location.startsWith(canonicalPath, Qt::CaseInsensitive);
                      });
}
