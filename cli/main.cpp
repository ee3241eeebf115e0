#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Interruption.h"
#include "scan/ProcessEnd.h"

#include <QCoreApplication>

namespace {

int run(int argc, char **argv)
{
    const Console console;
    const QCoreApplication application(argc, argv);
    catchInterruptions();
    return runProgram(QCoreApplication::arguments().mid(1));
}

} // namespace

int main(int argc, char *argv[])
{
    return leaveMain(run(argc, argv));
}
