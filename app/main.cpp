#include "app/CommandLine.h"
#include "app/MainWindow.h"
#include "app/ProgramEnd.h"
#include "app/ScaledWindow.h"
#include "scan/ProcessEnd.h"

#include <QApplication>
#include <QTextStream>

namespace {

constexpr int wrongUsage = 2;

/// Reads the arguments before a platform plugin is loaded: help, version and errors need no display.
CommandLine readCommandLine(int argc, char **argv)
{
    // On Windows, argv lacks the characters outside the ANSI code page; Qt reads the arguments from the
    // system.
    const QCoreApplication application(argc, argv);
    return parseCommandLine(QCoreApplication::arguments());
}

int run(int argc, char **argv)
{
    const CommandLine commandLine = readCommandLine(argc, argv);
    if (commandLine.answer) {
        QTextStream(stdout) << *commandLine.answer;
        return 0;
    }
    if (commandLine.error) {
        QTextStream(stderr) << "quillory: " << *commandLine.error << '\n';
        return wrongUsage;
    }

    QApplication application(argc, argv);
    MainWindow window;
    if (!commandLine.folders.isEmpty())
        window.setScanFolders(commandLine.folders);
    const auto scaledWindow = showOnPrimaryScreen(window);
    const int exitCode = QApplication::exec();
    finishTasksOrEndProcess(window, exitCode);
    return exitCode;
}

} // namespace

int main(int argc, char *argv[])
{
    return leaveMain(run(argc, argv));
}
