#pragma once

#include <QString>
#include <QStringView>

/// \a text with every control character (C0, DEL, C1) made visible: "\n", "\r", "\t", all others as "\x1b".
/// Everything else stays as it is, backslashes included.
[[nodiscard]] QString withVisibleControls(QStringView text);

/// Prints \a line with visible controls, and a line break, on standard error.
void printLine(const QString &line);

/// Prints "quillory-cli: ", \a message with visible controls, and a line break on standard error.
void printMessage(const QString &message);
