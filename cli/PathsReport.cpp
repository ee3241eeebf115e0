#include "cli/ReportFormats.h"

void writePaths(const Report &report, bool nullSeparated, const ReportSink &sink)
{
    const char end = nullSeparated ? '\0' : '\n';
    bool isFirst = true;
    for (const ReportGroup &group : report.groups) {
        QByteArray lines;
        if (!isFirst)
            lines += end;
        isFirst = false;
        for (const ReportFile &file : group.files) {
            if (file.action != FileAction::Link)
                lines += file.path.toUtf8() + end;
        }
        if (!sink(lines))
            return;
    }
}
