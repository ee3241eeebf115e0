#pragma once

#include "cli/Report.h"

#include <QByteArray>

#include <functional>

/// Receives the next bytes of a formatted report. Returning false ends the formatting.
using ReportSink = std::function<bool(const QByteArray &bytes)>;

// Each function formats \a report as UTF-8 and passes it to \a sink group by group.

/// For people: a heading for each group, the action before each path, and a closing line with totals. Control
/// characters are escaped.
void writeText(const Report &report, bool withColours, const ReportSink &sink);

/// RFC 4180 with CR LF: group (from 1), size, action, path, modified, compared.
void writeCsv(const Report &report, const ReportSink &sink);

/// One path per line, unescaped, and an empty line between groups. With \a nullSeparated, NUL replaces each
/// line break. Further names of a file are left out.
void writePaths(const Report &report, bool nullSeparated, const ReportSink &sink);
