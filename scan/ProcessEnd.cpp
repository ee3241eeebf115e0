#include "scan/ProcessEnd.h"

#include <QtGlobal>

#include <cstdio>
#include <cstdlib>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

void endProcess(int exitCode)
{
#ifdef Q_OS_WIN
    // Not ExitProcess(), which would run the exit handlers of the libraries.
    ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(exitCode));
#endif
    std::_Exit(exitCode);
}

int leaveMain(int exitCode)
{
#ifdef Q_OS_WIN
    std::fflush(nullptr);
    endProcess(exitCode);
#else
    return exitCode;
#endif
}
