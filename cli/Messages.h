#pragma once

#include <QString>
#include <QStringView>

/// \a text with every control character (C0, DEL, C1) escaped: "\n", "\r", "\t", all others like "\x1b".
/// Everything else stays as it is, backslashes included.
[[nodiscard]] QString withVisibleControls(QStringView text);

/// Prints \a line on standard error, with control characters escaped, and a line break.
void printLine(const QString &line);

/// Prints "quillory-cli: " and \a message as printLine() does.
void printMessage(const QString &message);
