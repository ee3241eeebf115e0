#pragma once

#include "cli/Report.h"

#include <QString>

/// A name that no file has, for a hard link that is about to replace another file: ".quillory-", 16
/// hexadecimal digits, ".tmp".
[[nodiscard]] QString temporaryName();

/// Removes the temporary names that a killed run left in the folders of \a report: further names of a file of
/// the report. Names that the report lists are left alone.
void removeLeftovers(const Report &report);
