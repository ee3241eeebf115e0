#include "tests/support/DuplicateFiles.h"

#include "tests/support/TestFiles.h"

#include <QDir>
#include <QDirIterator>

QStringList writeCopies(const QString &folder, const QStringList &names, const QByteArray &content)
{
    QStringList paths;
    for (const QString &name : names) {
        paths.append(QDir(folder).filePath(name));
        writeFile(paths.last(), content);
    }
    return paths;
}

void writePairs(const QString &folder, int count, const QString &suffix)
{
    for (int i = 0; i < count; ++i) {
        const QString ending = QStringLiteral("-%1.%2").arg(QString::number(i), suffix);
        writeCopies(
            folder, {QStringLiteral("first") + ending, QStringLiteral("second") + ending}, ending.toUtf8());
    }
}

QSet<QString> filesBelow(const QString &folder)
{
    QSet<QString> files;
    QDirIterator entries(folder, QDir::Files, QDirIterator::Subdirectories);
    while (entries.hasNext())
        files.insert(entries.next());
    return files;
}

QSet<QString> toSet(const QStringList &list)
{
    return {list.cbegin(), list.cend()};
}
