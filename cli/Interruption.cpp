#include "cli/Interruption.h"

#include <QtGlobal>

#include <atomic>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <csignal>
#endif

namespace {

// A signal handler has no argument of its own: the flag must be global.
std::atomic<bool> interruptionRequested{false}; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler must not lock");

#ifdef Q_OS_WIN
BOOL WINAPI requestInterruption(DWORD /*event*/)
{
    interruptionRequested = true;
    return TRUE;
}
#else
void requestInterruption(int /*signal*/)
{
    interruptionRequested = true;
}
#endif

} // namespace

void catchInterruptions()
{
#ifdef Q_OS_WIN
    SetConsoleCtrlHandler(requestInterruption, TRUE);
#else
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action = {};
        // If the parent ignores a signal, as nohup does, the program ignores it too.
        if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN)
            continue;
        action = {};
        action.sa_handler = requestInterruption;
        ::sigaction(signal, &action, nullptr);
    }
#endif
}

bool interrupted()
{
    return interruptionRequested;
}
