#include "cli/JsonReport.h"
#include "cli/ReportFormats.h"
#include "cli/TimeText.h"

namespace {

/// \a field, quoted if it contains a quote, a comma or a line break.
QByteArray csvField(const QString &field)
{
    QByteArray bytes = field.toUtf8();
    if (!bytes.contains('"') && !bytes.contains(',') && !bytes.contains('\r') && !bytes.contains('\n'))
        return bytes;
    return '"' + bytes.replace("\"", "\"\"") + '"';
}

} // namespace

void writeCsv(const Report &report, const ReportSink &sink)
{
    if (!sink("group,size,action,path,modified,compared\r\n"))
        return;
    qsizetype number = 0;
    for (const ReportGroup &group : report.groups) {
        const QByteArray start = QByteArray::number(++number) + ',' + QByteArray::number(group.size) + ',';
        QByteArray lines;
        for (const ReportFile &file : group.files) {
            lines += start + nameOf(file.action).toUtf8() + ',' + csvField(file.path) + ',' +
                     timeText(file.modified) + ',' + report.compared.toUtf8() + "\r\n";
        }
        if (!sink(lines))
            return;
    }
}
