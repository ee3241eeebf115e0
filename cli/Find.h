#pragma once

#include "cli/CommandLine.h"

#include <QStringList>

[[nodiscard]] const CommandDescription &findCommand();

/// Runs `quillory-cli find` with \a arguments, which do not include these two words. Returns the exit code.
[[nodiscard]] int runFind(const QStringList &arguments);
