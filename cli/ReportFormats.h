#pragma once

#include "cli/Report.h"

#include <QByteArray>

#include <functional>

/// Takes the next bytes of a formatted report. False: no more are wanted.
using ReportSink = std::function<bool(const QByteArray &bytes)>;

// Each passes \a report, group by group, to \a sink until it has enough. The bytes are UTF-8.

/// For people: a heading for each group, the action before each path, control characters escaped, and a
/// closing line with totals.
void writeText(const Report &report, bool withColours, const ReportSink &sink);

/// RFC 4180 with CR LF: group (from 1), size, action, path, modified, compared.
void writeCsv(const Report &report, const ReportSink &sink);

/// A path a line, as it is, and an empty line between groups; NUL instead of the line break with
/// \a nullSeparated. Further names of a file are left out.
void writePaths(const Report &report, bool nullSeparated, const ReportSink &sink);
