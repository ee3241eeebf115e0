#pragma once

#include <QStringList>

/// Runs the program with \a arguments, which do not include its own name. Returns the exit code.
[[nodiscard]] int runProgram(const QStringList &arguments);
