#include "app/ProgramEnd.h"
#include "scan/ProcessEnd.h"
#include "tests/support/MessageFilter.h"
#include "tests/support/WindowDriver.h"

#include <QApplication>
#include <QFile>

#include <cstdio>

using Qt::StringLiterals::operator""_s;

namespace {

/// Closes the window the way a window manager does; the event loop then has no reason to go on.
void closeWindow(WindowDriver &driver)
{
    std::puts("closing");
    std::fflush(stdout);
    driver.window().close();
}

/// The program, which scans a folder and closes its window by itself:
///
///     scan_and_close FOLDER TIMES start|analysis|results|FILE MILLISECONDS
///
/// lists FOLDER as often as TIMES says, presses Scan, and closes the window so long after that, after the
/// analysis has begun, after the results page has come up or after FILE has come into being. Writes "closing"
/// to the standard output at that moment.
int run(int argc, char **argv)
{
    const QApplication application(argc, argv);
    dropRepeatedMessages();
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5)
        return 2;
    WindowDriver driver;
    driver.listFolders(QStringList(arguments.at(2).toInt(), arguments.at(1)));
    const auto closeInTime = [&driver, milliseconds = arguments.at(4).toInt()] {
        QTimer::singleShot(milliseconds, &driver.window(), [&driver] { closeWindow(driver); });
    };
    const auto begun = [&driver, from = arguments.at(3)] {
        return (from == u"results"_s && driver.page() == u"duplicatespage"_s) ||
               (from == u"analysis"_s && driver.labelText("labelCurrentFile") == u"Analyzing..."_s) ||
               from == u"start"_s || QFile::exists(from);
    };
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&poll, begun, closeInTime] {
        if (begun()) {
            poll.stop();
            closeInTime();
        }
    });
    poll.start(1);
    QTimer::singleShot(0, &driver.window(), [&driver] { driver.click("btnStartScan"); });
    const int exitCode = QApplication::exec();
    finishTasksOrEndProcess(driver.window(), exitCode);
    return exitCode;
}

} // namespace

int main(int argc, char *argv[])
{
    return leaveMain(run(argc, argv));
}
