#include "app/ProgramEnd.h"

#include "app/MainWindow.h"
#include "scan/ProcessEnd.h"

#include <chrono>

using std::chrono_literals::operator""s;

namespace {

/// Tasks end within milliseconds unless a system call blocks. A longer limit keeps the closed program's
/// volumes busy; a shorter limit ends the process while a slow disk still responds.
constexpr auto taskTimeLimit = 2s;

} // namespace

void finishTasksOrEndProcess(MainWindow &window, int exitCode)
{
    if (window.finishTasks(QDeadlineTimer(taskTimeLimit)))
        return;
    qWarning("Quillory ends without waiting for a read that the system does not answer.");
    endProcess(exitCode);
}
