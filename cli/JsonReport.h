#pragma once

#include "cli/Report.h"

#include <QByteArray>

#include <optional>

/// The value of "quillory_report" that this program writes and reads.
inline constexpr int reportVersion = 1;

/// "keep", "remove", "link" or "reference".
[[nodiscard]] QString nameOf(FileAction action);

/// \a report as one JSON object in UTF-8, keys in alphabetical order, one file per line.
///
/// Paths are written unchanged: the caller makes them absolute. See timeText() for the times.
[[nodiscard]] QByteArray toJson(const Report &report);

/// The result of parseReport().
struct ParsedReport
{
    std::optional<Report> report;
    /// Why there is no report: one line without a full stop. Empty if there is a report.
    QString reason;
};

/// Parses a report of toJson(), in any layout and order of keys.
///
/// Reports may be edited by hand. Unknown keys are ignored, and the last of two equal keys counts. The
/// required keys are compared, groups and quillory_report; files and size of each group; action and path of
/// each file. Every known key must have the right type, except `kept`: ReportGroup::kept is -1 if it is not
/// the index of a file.
[[nodiscard]] ParsedReport parseReport(const QByteArray &json);
