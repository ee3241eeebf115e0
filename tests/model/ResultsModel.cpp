#include "tests/model/ResultsModel.h"

#include "tests/model/PageDescription.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFileInfo>
#include <QMap>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr qsizetype batchSize = 20;

QString expectedCategory(const QString &path)
{
    const QMap<QString, QStringList> suffixes{
        {u"picture"_s, {u"jpg"_s, u"jpeg"_s, u"png"_s, u"webp"_s, u"gif"_s, u"bmp"_s}},
        {u"video"_s, {u"mp4"_s, u"avi"_s, u"mkv"_s, u"mov"_s, u"wmv"_s}},
        {u"audio"_s, {u"mp3"_s, u"wav"_s, u"flac"_s, u"aac"_s}},
        {u"document"_s, {u"pdf"_s, u"docx"_s, u"doc"_s, u"txt"_s}},
        {u"archive"_s, {u"zip"_s, u"rar"_s, u"7z"_s}},
    };
    const QString name = path.mid(path.lastIndexOf(u'/') + 1);
    const qsizetype dot = name.lastIndexOf(u'.');
    const QString suffix = dot < 0 ? QString() : name.mid(dot + 1).toLower();
    for (auto category = suffixes.cbegin(); category != suffixes.cend(); ++category) {
        if (category->contains(suffix))
            return category.key();
    }
    return u"other"_s;
}

/// Creation time in milliseconds since 1970. A missing file counts as newer than any other.
qint64 created(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return std::numeric_limits<qint64>::max();
    const QDateTime birth = file.birthTime();
    return (birth.isValid() ? birth : file.lastModified()).toMSecsSinceEpoch();
}

QSet<QString> allButOldest(const QStringList &files)
{
    QString oldest = files.first();
    for (const QString &path : files) {
        if (created(path) < created(oldest))
            oldest = path;
    }
    QSet<QString> others(files.cbegin(), files.cend());
    others.remove(oldest);
    return others;
}

QString sizeText(qint64 size)
{
    if (size >= 1048576)
        return QString::number(double(size) / 1048576, 'f', 2) + u" MB"_s;
    if (size < 1024)
        return QString::number(size) + u" B"_s;
    return QString::number(double(size) / 1024, 'f', 2) + u" KB"_s;
}

} // namespace

QByteArray ResultsModel::fingerprint(const QString &path) const
{
    const QByteArray content = m_disk.content(path);
    const QByteArray tail = content.size() > 8192 ? content.last(4096) : QByteArray();
    return QCryptographicHash::hash(content.left(4096) + tail, QCryptographicHash::Sha256);
}

/// Groups of files with equal fingerprints. Files of unique size are left out.
QList<QStringList> ResultsModel::copies(const QStringList &collected) const
{
    QMap<qsizetype, QStringList> bySize;
    for (const QString &path : collected)
        bySize[m_disk.content(path).size()].append(path);
    QMap<QByteArray, QStringList> byFingerprint;
    for (const QStringList &sameSize : std::as_const(bySize)) {
        for (const QString &path : sameSize.size() < 2 ? QStringList() : sameSize)
            byFingerprint[fingerprint(path)].append(path);
    }
    QList<QStringList> found;
    for (const QStringList &files : std::as_const(byFingerprint)) {
        if (files.size() >= 2)
            found.append(files);
    }
    return found;
}

void ResultsModel::deliver(const QStringList &collected)
{
    m_groups.clear();
    for (const QStringList &files : copies(collected)) {
        const QString first = files.first();
        m_groups.append({first.mid(first.lastIndexOf(u'/') + 1), files, m_disk.content(first).size(),
            expectedCategory(first), allButOldest(files)});
    }
    load(u"all"_s);
}

void ResultsModel::showCategory(const QString &key)
{
    saveMarks();
    load(key);
    m_selectedKey = key;
}

void ResultsModel::load(const QString &key)
{
    m_shown = key;
    m_rows.clear();
    m_placeholder = listOf(key).isEmpty();
    m_actionsEnabled = !m_placeholder;
    m_status = m_placeholder ? u"No duplicate files found."_s : u"Loading Complete"_s;
    if (m_placeholder)
        return;
    qint64 files = 0;
    qint64 bytes = 0;
    for (const qsizetype i : listOf(key)) {
        files += m_groups.at(i).files.size();
        bytes += m_groups.at(i).files.size() * m_groups.at(i).size;
    }
    m_totals = u"Total %1 duplicates, %2 files, size %3 GB"_s.arg(QString::number(listOf(key).size()),
        QString::number(files), QString::number(double(bytes) / 1073741824, 'f', 2));
    loadNextBatch();
}

void ResultsModel::loadNextBatch()
{
    const QList<qsizetype> list = listOf(m_shown);
    for (const qsizetype i : list.mid(m_rows.size(), batchSize))
        appendRow(m_groups.at(i), m_shown);
}

void ResultsModel::appendRow(const Group &group, const QString &loadedUnder)
{
    GroupRow row;
    row.title =
        u"%1    %2, %3 file(s)"_s.arg(group.name, sizeText(group.size), QString::number(group.files.size()));
    row.loadedUnder = loadedUnder;
    qsizetype checked = 0;
    for (const QString &path : group.files) {
        const QFileInfo file(path);
        if (!file.exists())
            continue;
        row.files.append({path, QString::number(file.size() / 1024) + u" KB"_s,
            file.lastModified().toString(u"yyyy-MM-dd hh:mm:ss"_s), group.marked.contains(path)});
        checked += group.marked.contains(path) ? 1 : 0;
    }
    row.state = checked == 0                    ? Qt::Unchecked
                : checked == group.files.size() ? Qt::Checked
                                                : Qt::PartiallyChecked;
    m_rows.append(row);
}

void ResultsModel::refresh()
{
    m_rows.clear();
    m_placeholder = false;
    for (const qsizetype i : listOf(m_shown).mid(0, batchSize))
        appendRow(m_groups.at(i), QString());
}

void ResultsModel::saveMarks()
{
    const QList<qsizetype> list = listOf(m_shown);
    for (qsizetype i = 0; i < list.size(); ++i) {
        Group &group = m_groups[list.at(i)];
        group.marked.clear();
        if (i >= m_rows.size())
            continue;
        for (const FileRow &file : m_rows.at(i).files) {
            if (file.checked)
                group.marked.insert(file.path);
        }
        for (Group &other : m_groups) {
            if (other.files == group.files)
                other.marked = group.marked;
        }
    }
}

void ResultsModel::selectAll()
{
    if (m_rows.isEmpty() && !m_placeholder)
        return;
    for (Group &group : m_groups)
        group.marked = allButOldest(group.files);
    refresh();
}

QList<ShownBox> ResultsModel::unselect()
{
    if (m_rows.isEmpty() && !m_placeholder)
        return {{u"NOTE"_s, u"There are no duplicate files to work with."_s}};
    for (const qsizetype i : listOf(m_shown))
        m_groups[i].marked.clear();
    for (GroupRow &row : m_rows) {
        row.state = Qt::Unchecked;
        for (FileRow &file : row.files)
            file.checked = false;
    }
    return {};
}

QList<ShownBox> ResultsModel::removeSelected()
{
    saveMarks();
    int deleted = 0;
    int failed = 0;
    QList<Group> left;
    for (const Group &group : std::as_const(m_groups)) {
        Group rest = group;
        rest.marked.clear();
        for (const QString &path : group.marked) {
            rest.files.removeAll(path);
            ++(m_disk.remove(path) ? deleted : failed);
        }
        if (rest.files.size() >= 2)
            left.append(rest);
    }
    if (deleted + failed == 0)
        return {{u"NOTE"_s, u"Please select the files you want to delete!"_s}};
    m_groups = left;
    refresh();
    return {{u"Deletion Complete"_s, u"Deleted %1 files successfully, %2 files failed."_s.arg(
                                         QString::number(deleted), QString::number(failed))}};
}

void ResultsModel::checkFileRow(qsizetype group, qsizetype file, bool checked)
{
    m_rows[group].files[file].checked = checked;
}

void ResultsModel::checkGroupRow(qsizetype group, bool checked)
{
    m_rows[group].state = checked ? Qt::Checked : Qt::Unchecked;
}

/// Indices of the groups of a category.
QList<qsizetype> ResultsModel::listOf(const QString &key) const
{
    QList<qsizetype> list;
    for (qsizetype i = 0; i < m_groups.size(); ++i) {
        if (key == u"all" || m_groups.at(i).category == key)
            list.append(i);
    }
    return list;
}

QStringList ResultsModel::describe() const
{
    QStringList lines;
    if (m_placeholder)
        lines.append(u"No duplicate files"_s);
    for (const GroupRow &row : m_rows) {
        lines.append(groupLine(row.title, row.state, row.loadedUnder));
        for (const FileRow &file : row.files)
            lines.append(fileLine(file.path, file.size, file.time, file.checked));
    }
    lines.append(stateLine(m_actionsEnabled, m_selectedKey, m_totals, m_status));
    return lines;
}
