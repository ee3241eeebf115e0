#include "results/ResultTexts.h"

namespace {

constexpr qint64 kibi = 1024;
constexpr qint64 mebi = 1024 * kibi;
constexpr qint64 gibi = 1024 * mebi;

QString inUnits(qint64 bytes, qint64 unit)
{
    return QString::number(static_cast<double>(bytes) / static_cast<double>(unit), 'f', 2);
}

} // namespace

QString ResultTexts::groupSize(qint64 bytes)
{
    if (bytes >= mebi)
        return tr("%1 MB").arg(inUnits(bytes, mebi));
    if (bytes < kibi)
        return tr("%1 B").arg(bytes);
    return tr("%1 KB").arg(inUnits(bytes, kibi));
}

QString ResultTexts::fileSize(qint64 bytes)
{
    return tr("%1 KB").arg(bytes / kibi);
}

QString ResultTexts::groupTitle(const QString &fileName, qint64 size, qsizetype files)
{
    // One arg() call for all three values: the file name may contain "%1".
    return tr("%1    %2, %3 file(s)").arg(fileName, groupSize(size), QString::number(files));
}

QString ResultTexts::totals(const QList<DuplicateGroup *> &groups)
{
    qsizetype files = 0;
    qint64 bytes = 0;
    for (const DuplicateGroup *group : groups) {
        files += group->files.size();
        bytes += group->files.size() * group->size;
    }
    return tr("Total %1 duplicates, %2 files, size %3 GB")
        .arg(QString::number(groups.size()), QString::number(files), inUnits(bytes, gibi));
}
