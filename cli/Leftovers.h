#pragma once

#include "cli/Report.h"

#include <QString>

/// A random file name for a hard link that is about to replace another file: ".quillory-", 16 hexadecimal
/// digits, ".tmp".
[[nodiscard]] QString temporaryName();

/// Removes the temporary names that a killed run left in the folders of \a report. A name is removed only if
/// it leads to a file of the report and the report does not list it.
void removeLeftovers(const Report &report);
