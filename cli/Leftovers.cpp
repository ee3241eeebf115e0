#include "cli/Leftovers.h"

#include "cli/HeldFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSet>

#include <set>

using Qt::StringLiterals::operator""_s;

namespace {

QStringList temporaryFilesIn(const QSet<QString> &folders)
{
    static const QRegularExpression pattern(u"^\\.quillory-[0-9a-f]{16}\\.tmp$"_s);
    QStringList found;
    for (const QString &folder : folders) {
        const QDir directory(folder);
        const auto names = directory.entryList(
            {u".quillory-*.tmp"_s}, QDir::Files | QDir::Hidden | QDir::System | QDir::NoSymLinks);
        for (const QString &name : names.filter(pattern))
            found.append(directory.filePath(name));
    }
    return found;
}

QString folderOf(const QString &path)
{
    return path.first(path.lastIndexOf(u'/') + 1);
}

} // namespace

QString temporaryName()
{
    return u".quillory-%1.tmp"_s.arg(QRandomGenerator::system()->generate64(), 16, 16, QChar(u'0'));
}

void removeLeftovers(const Report &report)
{
    QSet<QString> folders;
    for (const ReportGroup &group : report.groups) {
        for (const ReportFile &file : group.files) {
            if (QDir::isAbsolutePath(file.path))
                folders.insert(folderOf(file.path));
        }
    }
    const QStringList leftovers = temporaryFilesIn(folders);
    if (leftovers.isEmpty())
        return;

    QSet<QString> listedNames;
    std::set<FileIdentity> listedFiles;
    for (const ReportGroup &group : report.groups) {
        for (const ReportFile &file : group.files) {
            listedNames.insert(QFileInfo(file.path).fileName());
            if (const auto identity = identityAt(file.path))
                listedFiles.insert(*identity);
        }
    }
    for (const QString &leftover : leftovers) {
        const auto identity = identityAt(leftover);
        // No content is lost: the file keeps the name that the report lists.
        if (identity && listedFiles.contains(*identity) &&
            !listedNames.contains(QFileInfo(leftover).fileName()))
            QFile::remove(leftover);
    }
}
