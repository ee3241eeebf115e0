#include "app/MainWindow.h"
#include "app/ProgramEnd.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    MainWindow window;
    window.show();
    const int exitCode = QApplication::exec();
    finishTasksOrEndProcess(window, exitCode);
    return exitCode;
}
