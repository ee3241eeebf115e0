#include "cli/JsonReport.h"
#include "tests/fuzz/FuzzReport.h"

#include <QJsonDocument>

namespace {

/// Checks what `remove` does not check again.
void checkReport(const Report &report, const QByteArray &json)
{
    for (const ReportGroup &group : report.groups) {
        expectEqual(
            "Kept file is in the group", group.kept >= -1 && group.kept < group.files.size(), true, json);
        expectEqual("Size is valid", group.size >= 0, true, json);
    }
    const bool isKnown =
        report.compared == QStringLiteral("bytes") || report.compared == QStringLiteral("sample");
    expectEqual("Comparison is known", isKnown, true, json);
}

} // namespace

/// A report is either refused with a reason of one line, or writing and reading it again does not change it.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t count)
{
    const QByteArray json(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(count));
    const ParsedReport parsed = parseReport(json);
    expectEqual("Reason", parsed.reason.isEmpty(), parsed.report.has_value(), json);
    expectEqual("Line break in the reason", parsed.reason.contains(u'\n'), false, json);
    if (!parsed.report)
        return 0;
    checkReport(*parsed.report, json);
    Report report = *parsed.report;
    // The time may be missing, but it is always written.
    if (!report.created.isValid())
        report.created = QDateTime::fromMSecsSinceEpoch(0, Qt::UTC);
    const QByteArray written = toJson(report);
    const ParsedReport again = parseReport(written);
    expectEqual("Report that was written", again.report.has_value(), true, json);
    expectEqual("Report written again", toJson(*again.report), written, json);
    return 0;
}
