#pragma once

#include "cli/CommandLine.h"

#include <QStringList>

[[nodiscard]] const CommandDescription &removeCommand();

/// Runs `quillory-cli remove` with what follows these two words. Returns the exit code.
int runRemove(const QStringList &arguments);
