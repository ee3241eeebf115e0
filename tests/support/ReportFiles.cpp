#include "tests/support/ReportFiles.h"

#include "tests/support/TestFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

using Qt::StringLiterals::operator""_s;

ReportGroup groupOf(const QStringList &paths)
{
    ReportGroup group;
    for (const QString &path : paths)
        group.files.append({.action = FileAction::Remove, .path = path});
    group.files.first().action = FileAction::Keep;
    group.size = QFileInfo(paths.first()).size();
    return group;
}

Report reportOf(const QList<ReportGroup> &groups)
{
    Report report;
    report.compared = u"bytes"_s;
    report.created = QDateTime::currentDateTimeUtc();
    report.groups = groups;
    return report;
}

QStringList treeOf(const QString &folder)
{
    QStringList entries;
    QDirIterator entry(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
        QDirIterator::Subdirectories);
    while (entry.hasNext()) {
        const QString path = entry.next();
        const QFileInfo info = entry.fileInfo();
        const QString name = QDir(folder).relativeFilePath(path);
        if (info.isSymLink())
            entries += name + u" -> "_s + info.symLinkTarget();
        else if (info.isFile())
            entries += name + u": "_s + QString::fromLatin1(contentOf(path));
        else
            entries += name + u'/';
    }
    entries.sort();
    return entries;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

void replaceFile(const QString &path, const QByteArray &content)
{
    const QDateTime modified = QFileInfo(path).lastModified();
    const QString other = path + u".new"_s;
    writeFile(other, content);
    QFile file(other);
    if (!file.open(QFile::ReadWrite) || !file.setFileTime(modified, QFileDevice::FileModificationTime))
        qFatal("Cannot set the time of %s", qPrintable(other));
    file.close();
    if (!QFile::remove(path) || !QFile::rename(other, path))
        qFatal("Cannot replace %s", qPrintable(path));
}
