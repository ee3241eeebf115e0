#include "app/ProgramEnd.h"

#include "app/MainWindow.h"
#include "scan/ProcessEnd.h"

#include <chrono>

using std::chrono_literals::operator""s;

namespace {

/// Tasks end within milliseconds unless the system holds them. A longer limit would keep the closed program
/// and its volumes in use; a shorter one would end more programs whose disk is only slow.
constexpr auto taskTimeLimit = 2s;

} // namespace

void finishTasksOrEndProcess(MainWindow &window, int exitCode)
{
    if (window.finishTasks(QDeadlineTimer(taskTimeLimit)))
        return;
    qWarning("Quillory ends without waiting for a read that the system does not answer.");
    endProcess(exitCode);
}
