#pragma once

#include "cli/Report.h"

#include <QString>

#include <optional>

/// Why the file at \a journal cannot be the journal of a removal: it is the file \a reportFile, or a file
/// that \a report lists. Links are followed. \a reportFile is empty if the report has no file.
[[nodiscard]] std::optional<QString> journalObjection(
    const QString &journal, const QString &reportFile, const Report &report);
