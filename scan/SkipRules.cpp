#include "scan/SkipRules.h"

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
    // That of a file which has vanished: no rule holds.
    if (canonicalPath.isEmpty())
        return false;
    return std::any_of(locations.begin(), locations.end(), [&canonicalPath](const QString &location) {
        return canonicalPath.startsWith(location, Qt::CaseInsensitive);
    });
}

SkipRules::SkipRules(const ScanOptions &options)
    : m_locations(
          skippedLocations(options, QStandardPaths::writableLocation(QStandardPaths::DesktopLocation)))
    , m_skipsHidden(options.skipHiddenFolders)
{
}

bool SkipRules::skip(const QString &path)
{
    return (!m_locations.isEmpty() && skipLocation(path)) || (m_skipsHidden && QFileInfo(path).isHidden());
}

bool SkipRules::skipLocation(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    if (const QStringView folder = QStringView(path).left(slash + 1); folder != m_folder)
        enter(folder.toString());
    return m_skipsFolder ||
           (m_dependsOnName && isSkippedLocation(m_canonicalFolder + path.mid(slash + 1), m_locations));
}

void SkipRules::enter(const QString &folder)
{
    m_folder = folder;
    m_canonicalFolder = QFileInfo(folder).canonicalFilePath();
    if (!m_canonicalFolder.isEmpty() && !m_canonicalFolder.endsWith(u'/'))
        m_canonicalFolder += u'/';
    m_skipsFolder = isSkippedLocation(m_canonicalFolder, m_locations);
    m_dependsOnName = !m_canonicalFolder.isEmpty() &&
                      std::any_of(m_locations.begin(), m_locations.end(), [this](const QString &location) {
                          return location.startsWith(m_canonicalFolder, Qt::CaseInsensitive);
                      });
}
