#include "app/ProgramEnd.h"
#include "scan/ProcessEnd.h"
#include "tests/support/MessageFilter.h"
#include "tests/support/WindowDriver.h"

#include <QApplication>
#include <QFile>

#include <cstdio>

using Qt::StringLiterals::operator""_s;

namespace {

/// Closes the window as a window manager does, which ends the event loop.
void closeWindow(WindowDriver &driver)
{
    std::puts("closing");
    std::fflush(stdout);
    driver.window().close();
}

/// Scans a folder and closes its own window:
///
///     scan_and_close FOLDER TIMES start|analysis|results|FILE MILLISECONDS
///
/// Lists FOLDER TIMES times and starts a scan. Closes the window MILLISECONDS after the start of the scan,
/// the start of the analysis, the appearance of the results page or the creation of FILE. Prints "closing" at
/// that moment.
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
