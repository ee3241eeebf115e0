#pragma once

#include "cli/Report.h"

#include <QByteArray>

#include <optional>

/// The value of "quillory_report" that this program writes and reads.
inline constexpr int reportVersion = 1;

/// "keep", "remove", "link" or "reference".
[[nodiscard]] QString nameOf(FileAction action);

/// \a report as one JSON object, UTF-8, keys in alphabetical order, one file a line.
///
/// Paths are written as they are: the caller makes them absolute. Times outside the years 0 to 9999, which
/// the format cannot express, are written as the nearest one that it can.
[[nodiscard]] QByteArray toJson(const Report &report);

/// A report, or why there is none.
struct ParsedReport
{
    std::optional<Report> report;
    /// One line without a full stop; empty when there is a report.
    QString reason;
};

/// Reads what toJson() wrote, in any layout and order of keys.
///
/// Reports may be edited by hand. Keys that the format does not know are ignored, and the last of two equal
/// keys counts. What `remove` relies on must be there: compared, groups, quillory_report; files and size of a
/// group; action and path of a file. Everything that is there must be of the right type, except `kept`:
/// if it is no index of a file, the group's kept is -1.
[[nodiscard]] ParsedReport parseReport(const QByteArray &json);
