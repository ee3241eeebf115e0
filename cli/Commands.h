#pragma once

#include <QStringList>

/// Runs the program with \a arguments, its own name left out. Returns the exit code.
int runProgram(const QStringList &arguments);
