#include "scan/SkipRules.h"

#include "scan/FolderEntries.h"

#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <functional>

using Qt::Literals::StringLiterals::operator""_s;

QStringList skippedLocations(const ScanOptions &options, const QString &desktopFolder)
{
    QStringList locations;
    if (options.skipSystem)
        locations.append(u"C:/Windows"_s);
    if (options.skipApps)
        locations.append({u"C:/Program Files"_s, u"C:/Program Files (x86)"_s});
    if (options.skipDesktop)
        locations.append(desktopFolder);
    return locations;
}

bool isSkippedLocation(const QString &canonicalPath, const QStringList &locations)
{
    // The file is gone: no rule applies.
    if (canonicalPath.isEmpty())
        return false;
    return std::ranges::any_of(locations, [&canonicalPath](const QString &location) {
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
            m_scanFolders.append({withSlash(folder), canonicalPathWithSlash(folder)});
    }
    const auto pathLength = [](const Folder &folder) { return folder.path.size(); };
    std::ranges::stable_sort(m_scanFolders, std::ranges::greater(), pathLength);
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
    const auto scanFolder = std::ranges::find_if(
        m_scanFolders, [&folder](const Folder &candidate) { return folder.startsWith(candidate.path); });
    if (scanFolder == m_scanFolders.cend())
        return canonicalPathWithSlash(folder);
    return scanFolder->canonicalPath.isEmpty()
               ? QString()
               : scanFolder->canonicalPath + folder.sliced(scanFolder->path.size());
}

void SkipRules::enter(const QString &folder)
{
    m_folder = {folder, canonicalPathOf(folder)};
    const QString &canonicalPath = m_folder.canonicalPath;
    m_skipsFolder = isSkippedLocation(canonicalPath, m_locations);
    m_dependsOnName =
        !canonicalPath.isEmpty() && std::ranges::any_of(m_locations, [&](const QString &location) {
            return location.startsWith(canonicalPath, Qt::CaseInsensitive);
        });
}
