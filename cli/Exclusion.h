#pragma once

#include "scan/FileSurvey.h"

#include <QRegularExpression>
#include <QString>
#include <QStringList>

/// The expression that matches a whole text as \a glob does: "?" one character, "*" any number of them,
/// neither of them "/"; "**" any number with "/"; "[a-z]" one of a set, "[!a-z]" one outside it; "\" takes
/// the meaning from the next character. Heeds case.
[[nodiscard]] QRegularExpression globExpression(const QString &glob);

/// The rule that leaves out what one of \a globs matches: its name, or its path below the folder. Empty
/// without globs.
[[nodiscard]] ExclusionRule exclusionRule(const QStringList &globs);
