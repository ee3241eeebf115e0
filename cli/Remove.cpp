#include "cli/Remove.h"

#include "cli/ExitCode.h"

int runRemove(const QStringList &arguments)
{
    const auto commandLine = readCommandLine(removeCommand(), arguments);
    const int *const exitCode = std::get_if<int>(&commandLine);
    return exitCode != nullptr ? *exitCode : int(ExitFailed);
}
