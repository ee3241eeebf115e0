#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Interruption.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    const Console console;
    const QCoreApplication application(argc, argv);
    catchInterruptions();
    return runProgram(QCoreApplication::arguments().mid(1));
}
