#include "scan/FileCollection.h"

#include "scan/FileCategories.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QStandardPaths>

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): that is what they are for.
std::atomic<qint32> scannedFileCount{0};
std::atomic<qint32> acceptedFileCount{0};
std::atomic<qint32> lastReportedCount{0};
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

namespace {

constexpr qint32 reportEveryFiles = 100;
constexpr qint64 reportEveryMilliseconds = 800;

/// Calls \a visit with the path of every file below \a folders until it returns false.
template <typename Visit>
void walk(const QStringList &folders, Visit visit)
{
    for (const QString &folder : folders) {
        QDirIterator entries(folder, QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            if (!visit(entries.next()))
                return;
        }
    }
}

/// Canonical paths at the price of one look-up per folder: a regular file's is its folder's plus its name.
class CanonicalPaths
{
public:
    /// Empty when the folder has vanished.
    QString of(const QString &path)
    {
        const qsizetype slash = path.lastIndexOf(u'/');
        if (const QStringView folder = QStringView(path).left(slash + 1); folder != m_folder) {
            m_folder = folder.toString();
            m_canonicalFolder = QFileInfo(m_folder).canonicalFilePath();
            if (!m_canonicalFolder.isEmpty() && !m_canonicalFolder.endsWith(u'/'))
                m_canonicalFolder += u'/';
        }
        return m_canonicalFolder.isEmpty() ? QString() : m_canonicalFolder + path.mid(slash + 1);
    }

private:
    QString m_folder;
    QString m_canonicalFolder;
};

/// The skip rules of one scan.
class SkipRules
{
public:
    explicit SkipRules(const ScanOptions &options)
        : m_options(options)
        , m_desktopFolder(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation))
    {
    }

    bool skips(const QString &path)
    {
        if (m_options.skipSystem || m_options.skipApps || m_options.skipDesktop) {
            if (isSkippedLocation(m_canonicalPaths.of(path), m_options, m_desktopFolder))
                return true;
        }
        return m_options.skipHiddenFolders && QFileInfo(path).isHidden();
    }

private:
    const ScanOptions m_options;
    const QString m_desktopFolder;
    CanonicalPaths m_canonicalPaths;
};

/// Decides when a progress report is due.
class ReportThrottle
{
public:
    ReportThrottle()
    {
        m_sinceReport.start();
    }

    bool isDue(qint32 scanned)
    {
        if (scanned - lastReportedCount < reportEveryFiles &&
            m_sinceReport.elapsed() < reportEveryMilliseconds)
            return false;
        lastReportedCount = scanned;
        m_sinceReport.restart();
        return true;
    }

private:
    QElapsedTimer m_sinceReport;
};

int percentOf(qint32 scanned, qint32 total)
{
    return total > 0 ? static_cast<int>(qint64(scanned) * 100 / total) : 0;
}

} // namespace

bool isSkippedLocation(const QString &canonicalPath, const ScanOptions &options, const QString &desktopFolder)
{
    const auto isBelow = [&](QStringView prefix) {
        return canonicalPath.startsWith(prefix, Qt::CaseInsensitive);
    };
    if (canonicalPath.isEmpty())
        return false;
    return (options.skipSystem && isBelow(u"C:/Windows")) ||
           (options.skipApps && (isBelow(u"C:/Program Files") || isBelow(u"C:/Program Files (x86)"))) ||
           (options.skipDesktop && isBelow(desktopFolder));
}

QStringList collectFiles(
    const QStringList &folders, const ScanOptions &options, const CollectionCallbacks &callbacks)
{
    qint32 total = 0;
    walk(folders, [&](const QString &) {
        ++total;
        return !callbacks.abandoned();
    });
    callbacks.counted();
    scannedFileCount = 0;
    acceptedFileCount = 0;

    QStringList accepted;
    SkipRules rules(options);
    ReportThrottle throttle;
    walk(folders, [&](const QString &path) {
        if (rules.skips(path))
            return !callbacks.abandoned();
        const qint32 scanned = ++scannedFileCount;
        if (collectionAccepts(lowerCaseSuffix(path), options.fileTypes)) {
            ++acceptedFileCount;
            accepted.append(path);
        }
        if (throttle.isDue(scanned))
            callbacks.progress(path, percentOf(scanned, total));
        return !callbacks.abandoned();
    });
    return accepted;
}
