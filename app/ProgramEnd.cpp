#include "app/ProgramEnd.h"

#include "app/MainWindow.h"

#include <chrono>
#include <cstdlib>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

using std::chrono_literals::operator""s;

namespace {

/// Tasks end within milliseconds unless the system holds them. Longer would keep a closed program alive, and
/// its volumes in use; shorter could cut off a slow disk.
constexpr auto taskTimeLimit = 2s;

[[noreturn]] void endProcess(int exitCode)
{
#ifdef Q_OS_WIN
    // ExitProcess() would run the code of the libraries after it has ended their threads, whose locks stay
    // held.
    ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(exitCode));
#endif
    std::_Exit(exitCode);
}

} // namespace

void finishTasksOrEndProcess(MainWindow &window, int exitCode)
{
    if (window.finishTasks(QDeadlineTimer(taskTimeLimit)))
        return;
    qWarning("Quillory ends without waiting for a read that the system does not answer.");
    endProcess(exitCode);
}
