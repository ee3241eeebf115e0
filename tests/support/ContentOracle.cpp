#include "tests/support/ContentOracle.h"

#include "tests/support/TestFiles.h"

#include <QMap>

#include <algorithm>

std::vector<SurveyedFile> writeFiles(const QString &folder, const QList<QByteArray> &contents)
{
    std::vector<SurveyedFile> files;
    for (qsizetype i = 0; i < contents.size(); ++i) {
        const QString path = QStringLiteral("%1/%2").arg(folder).arg(i);
        writeFile(path, contents[i]);
        files.push_back({.path = path, .size = contents[i].size()});
    }
    return files;
}

Groups groupsOfEqual(const QList<QByteArray> &contents)
{
    QMap<QByteArray, std::vector<quint32>> indexes;
    for (qsizetype i = 0; i < contents.size(); ++i)
        indexes[contents[i]].push_back(static_cast<quint32>(i));
    Groups groups;
    for (const std::vector<quint32> &group : std::as_const(indexes)) {
        if (group.size() > 1)
            groups.push_back(group);
    }
    std::ranges::sort(groups);
    return groups;
}

ContentGroups groupQuietly(std::span<const SurveyedFile> files, int threads, ContentComparison comparison)
{
    return groupByContent(
        files, comparison, threads, {.progress = [](qint64, qint64) {}, .abandoned = [] { return false; }});
}

QStringList pathsOf(const QList<UnreadablePath> &unreadable)
{
    QStringList paths;
    for (const UnreadablePath &entry : unreadable)
        paths.append(entry.path);
    return paths;
}
