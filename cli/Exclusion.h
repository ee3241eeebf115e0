#pragma once

#include "scan/FileSurvey.h"

#include <QRegularExpression>
#include <QString>
#include <QStringList>

/// The expression that matches the whole texts that \a glob matches, case-sensitively: "?" matches one
/// character and "*" any number of characters, except "/"; "**" matches any characters; "[a-z]" matches one
/// of a set and "[!a-z]" one outside it; "\" makes the next character literal.
[[nodiscard]] QRegularExpression globExpression(const QString &glob);

/// The rule that excludes a file or folder if one of \a globs matches its name or its path below the searched
/// folder. Empty if there are no globs.
[[nodiscard]] ExclusionRule exclusionRule(const QStringList &globs);
