#include "cli/JsonReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <limits>

using Qt::StringLiterals::operator""_s;

namespace {

std::optional<FileAction> actionNamed(const QString &name)
{
    for (const auto action :
        {FileAction::Keep, FileAction::Remove, FileAction::Link, FileAction::Reference}) {
        if (nameOf(action) == name)
            return action;
    }
    return std::nullopt;
}

/// Reads the values of a report from a JSON document. Each function returns false if it sets a reason.
class ReportReader
{
public:
    [[nodiscard]] bool read(const QJsonObject &root, Report &report);

    /// Why the report could not be read.
    [[nodiscard]] QString reason() const
    {
        return m_reason;
    }

private:
    /// Whether a key may be missing.
    enum class Presence { Required, Optional };

    bool fail(const QString &key, const QString &expected);
    bool readVersion(const QJsonValue &value);
    bool readText(const QJsonObject &object, const QString &key, Presence presence, QString &text);
    bool readNumber(const QJsonObject &object, const QString &key, Presence presence, qint64 &number);
    bool readIdentifier(const QJsonObject &object, const QString &key, quint64 &number);
    bool readTime(const QJsonObject &object, const QString &key, QDateTime &time);
    bool readFolders(const QJsonValue &value, QStringList &folders);
    bool readSummary(const QJsonValue &value, ReportSummary &summary);
    bool readGroup(const QJsonValue &value, ReportGroup &group);
    bool readFile(const QJsonValue &value, ReportFile &file);

    QString m_reason;
    /// Current position for the reason, counted from 1: "group 3: file 2: ".
    QString m_place;
};

bool ReportReader::fail(const QString &key, const QString &expected)
{
    m_reason = u"%1%2 is not %3"_s.arg(m_place, key, expected);
    return false;
}

bool ReportReader::readVersion(const QJsonValue &value)
{
    if (value.toInteger(-1) == reportVersion)
        return true;
    if (value.toDouble(-1) > reportVersion)
        m_reason = u"it was written for a later version of this program"_s;
    else
        m_reason = u"it is no report of this program"_s;
    return false;
}

bool ReportReader::readText(const QJsonObject &object, const QString &key, Presence presence, QString &text)
{
    const QJsonValue value = object.value(key);
    if (value.isUndefined() && presence == Presence::Optional)
        return true;
    if (!value.isString())
        return fail(key, u"a text"_s);
    text = value.toString();
    return true;
}

bool ReportReader::readNumber(
    const QJsonObject &object, const QString &key, Presence presence, qint64 &number)
{
    const QJsonValue value = object.value(key);
    if (value.isUndefined() && presence == Presence::Optional)
        return true;
    number = value.toInteger(-1);
    return number >= 0 || fail(key, u"a whole number"_s);
}

bool ReportReader::readIdentifier(const QJsonObject &object, const QString &key, quint64 &number)
{
    // Qt reads numbers of 2^63 and more as the nearest double, which can be 2^64.
    constexpr double limit = 18446744073709551616.0;
    const double nearest = object.value(key).toDouble(0);
    if (nearest >= limit / 2 && nearest <= limit) {
        number = nearest < limit ? static_cast<quint64>(nearest) : std::numeric_limits<quint64>::max();
        return true;
    }
    qint64 small = 0;
    if (!readNumber(object, key, Presence::Optional, small))
        return false;
    number = static_cast<quint64>(small);
    return true;
}

bool ReportReader::readTime(const QJsonObject &object, const QString &key, QDateTime &time)
{
    if (object.value(key).isUndefined())
        return true;
    time = QDateTime::fromString(object.value(key).toString(), Qt::ISODateWithMs);
    return time.isValid() || fail(key, u"a time"_s);
}

bool ReportReader::readFolders(const QJsonValue &value, QStringList &folders)
{
    if (!value.isUndefined() && !value.isArray())
        return fail(u"folders"_s, u"a list"_s);
    for (const QJsonValue folder : value.toArray()) {
        if (!folder.isString())
            return fail(u"folders"_s, u"a list of texts"_s);
        folders.append(folder.toString());
    }
    return true;
}

bool ReportReader::readSummary(const QJsonValue &value, ReportSummary &summary)
{
    if (!value.isUndefined() && !value.isObject())
        return fail(u"summary"_s, u"an object"_s);
    const QJsonObject object = value.toObject();
    const auto optional = Presence::Optional;
    return readNumber(object, u"files"_s, optional, summary.files) &&
           readNumber(object, u"groups"_s, optional, summary.groups) &&
           readNumber(object, u"removable_bytes"_s, optional, summary.removableBytes) &&
           readNumber(object, u"removable_files"_s, optional, summary.removableFiles) &&
           readNumber(object, u"undecodable_names"_s, optional, summary.undecodableNames) &&
           readNumber(object, u"unreadable"_s, optional, summary.unreadable);
}

bool ReportReader::readFile(const QJsonValue &value, ReportFile &file)
{
    if (!value.isObject())
        return fail(u"it"_s, u"an object"_s);
    const QJsonObject object = value.toObject();
    const std::optional<FileAction> action = actionNamed(object.value(u"action"_s).toString());
    if (!action)
        return fail(u"action"_s, u"keep, remove, link or reference"_s);
    file.action = *action;
    QDateTime modified;
    if (!readIdentifier(object, u"device"_s, file.device) ||
        !readIdentifier(object, u"inode"_s, file.inode) || !readIdentifier(object, u"links"_s, file.links) ||
        !readTime(object, u"modified"_s, modified) ||
        !readText(object, u"path"_s, Presence::Required, file.path))
        return false;
    file.modified = modified.isValid() ? modified.toMSecsSinceEpoch() : 0;
    return true;
}

bool ReportReader::readGroup(const QJsonValue &value, ReportGroup &group)
{
    if (!value.isObject())
        return fail(u"it"_s, u"an object"_s);
    const QJsonObject object = value.toObject();
    if (!readNumber(object, u"size"_s, Presence::Required, group.size))
        return false;
    if (!object.value(u"files"_s).isArray())
        return fail(u"files"_s, u"a list"_s);
    const QJsonArray files = object.value(u"files"_s).toArray();
    const QString groupPlace = m_place;
    group.files.resize(files.size());
    for (qsizetype i = 0; i < files.size(); ++i) {
        m_place = groupPlace + u"file %1: "_s.arg(i + 1);
        if (!readFile(files.at(i), group.files[i]))
            return false;
    }
    m_place = groupPlace;
    const qint64 kept = object.value(u"kept"_s).toInteger(-1);
    group.kept = kept < files.size() ? qMax<qint64>(kept, -1) : -1;
    return true;
}

bool ReportReader::read(const QJsonObject &root, Report &report)
{
    if (!readVersion(root.value(u"quillory_report"_s)))
        return false;
    if (!readText(root, u"compared"_s, Presence::Required, report.compared) ||
        !readTime(root, u"created"_s, report.created) ||
        !readFolders(root.value(u"folders"_s), report.folders) ||
        !readSummary(root.value(u"summary"_s), report.summary) ||
        !readText(root, u"version"_s, Presence::Optional, report.version))
        return false;
    if (report.compared != u"bytes"_s && report.compared != u"sample"_s)
        return fail(u"compared"_s, u"bytes or sample"_s);
    if (!root.value(u"groups"_s).isArray())
        return fail(u"groups"_s, u"a list"_s);
    const QJsonArray groups = root.value(u"groups"_s).toArray();
    report.groups.resize(groups.size());
    for (qsizetype i = 0; i < groups.size(); ++i) {
        m_place = u"group %1: "_s.arg(i + 1);
        if (!readGroup(groups.at(i), report.groups[i]))
            return false;
    }
    return true;
}

} // namespace

ParsedReport parseReport(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        return {std::nullopt, u"it is no JSON: %1 at byte %2"_s.arg(error.errorString()).arg(error.offset)};
    if (!document.isObject())
        return {std::nullopt, u"it is no report of this program"_s};
    Report report;
    ReportReader reader;
    if (!reader.read(document.object(), report))
        return {std::nullopt, reader.reason()};
    return {report, QString()};
}
