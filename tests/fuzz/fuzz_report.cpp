#include "cli/JsonReport.h"
#include "tests/fuzz/FuzzReport.h"

#include <QJsonDocument>

namespace {

/// What `remove` relies on without a further look.
void checkReport(const Report &report, const QByteArray &json)
{
    for (const ReportGroup &group : report.groups) {
        expectEqual("Kept file is one", group.kept >= -1 && group.kept < group.files.size(), true, json);
        expectEqual("Size is one", group.size >= 0, true, json);
    }
    const bool isKnown =
        report.compared == QStringLiteral("bytes") || report.compared == QStringLiteral("sample");
    expectEqual("Comparison is known", isKnown, true, json);
}

} // namespace

/// What is read is either refused with one line, or written and read again the same.
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
    // It may be missing, but is always written.
    if (!report.created.isValid())
        report.created = QDateTime::fromMSecsSinceEpoch(0, Qt::UTC);
    const QByteArray written = toJson(report);
    const ParsedReport again = parseReport(written);
    expectEqual("Report that was written", again.report.has_value(), true, json);
    expectEqual("Report written again", toJson(*again.report), written, json);
    return 0;
}
