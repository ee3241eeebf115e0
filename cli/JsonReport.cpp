#include "cli/JsonReport.h"

#include "cli/TimeText.h"

#include <QJsonArray>
#include <QJsonDocument>

using Qt::StringLiterals::operator""_s;

namespace {

/// \a text as a JSON string, quotes included.
QByteArray quoted(const QString &text)
{
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return array.sliced(1, array.size() - 2);
}

// The numbers are not written with QJsonDocument, which rounds inodes above 2^63.

void append(QByteArray &json, const ReportFile &file)
{
    json += R"({"action": ")";
    json += nameOf(file.action).toLatin1();
    json += R"(", "device": )" + QByteArray::number(file.device);
    json += R"(, "inode": )" + QByteArray::number(file.inode);
    json += R"(, "links": )" + QByteArray::number(file.links);
    json += R"(, "modified": ")" + timeText(file.modified);
    json += R"(", "path": )" + quoted(file.path) + '}';
}

void append(QByteArray &json, const ReportGroup &group)
{
    json += R"({"files": [)";
    for (const ReportFile &file : group.files) {
        json += &file == group.files.constData() ? "\n  " : ",\n  ";
        append(json, file);
    }
    json += R"(], "kept": )" + QByteArray::number(group.kept);
    json += R"(, "size": )" + QByteArray::number(group.size) + '}';
}

void append(QByteArray &json, const ReportSummary &summary)
{
    json += R"({"files": )" + QByteArray::number(summary.files);
    json += R"(, "groups": )" + QByteArray::number(summary.groups);
    json += R"(, "removable_bytes": )" + QByteArray::number(summary.removableBytes);
    json += R"(, "removable_files": )" + QByteArray::number(summary.removableFiles);
    json += R"(, "undecodable_names": )" + QByteArray::number(summary.undecodableNames);
    json += R"(, "unreadable": )" + QByteArray::number(summary.unreadable) + '}';
}

} // namespace

QString nameOf(FileAction action)
{
    switch (action) {
    case FileAction::Keep:
        return u"keep"_s;
    case FileAction::Link:
        return u"link"_s;
    case FileAction::Reference:
        return u"reference"_s;
    case FileAction::Remove:
        break;
    }
    return u"remove"_s;
}

QByteArray toJson(const Report &report)
{
    QByteArray json = R"({"compared": )" + quoted(report.compared);
    json += ",\n\"created\": " + quoted(report.created.toUTC().toString(Qt::ISODate));
    json += ",\n\"folders\": " +
            QJsonDocument(QJsonArray::fromStringList(report.folders)).toJson(QJsonDocument::Compact);
    json += ",\n\"groups\": [";
    for (const ReportGroup &group : report.groups) {
        json += &group == report.groups.constData() ? "\n " : ",\n ";
        append(json, group);
    }
    json += "],\n\"quillory_report\": " + QByteArray::number(reportVersion);
    json += ",\n\"summary\": ";
    append(json, report.summary);
    json += ",\n\"version\": " + quoted(report.version) + "}\n";
    return json;
}
