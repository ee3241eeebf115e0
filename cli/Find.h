#pragma once

#include "cli/CommandLine.h"

#include <QStringList>

[[nodiscard]] const CommandDescription &findCommand();

/// Runs `quillory-cli find` with what follows these two words. Returns the exit code.
int runFind(const QStringList &arguments);
