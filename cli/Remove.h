#pragma once

#include "cli/CommandLine.h"

#include <QStringList>

[[nodiscard]] const CommandDescription &removeCommand();

/// Runs `quillory-cli remove` with \a arguments, which do not include these two words. Returns the exit code.
[[nodiscard]] int runRemove(const QStringList &arguments);
