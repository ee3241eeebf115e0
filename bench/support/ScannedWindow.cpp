#include "bench/support/ScannedWindow.h"

#include "tests/support/MessageFilter.h"

namespace {

/// Sets the environment variable because the constructor of QApplication reads it.
char **withPlatform(char **arguments)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return arguments;
}

} // namespace

WindowDriver &ScannedWindow::withFiles(int files)
{
    constexpr int patienceMilliseconds = 300'000;
    if (!m_driver || m_files != files) {
        m_driver.emplace();
        m_files = files;
        m_driver->listFolders(m_tree.folders(files));
        if (!m_driver->scan(patienceMilliseconds))
            qFatal("The scan of %d files did not end", files);
    } else {
        m_driver->click("btnAll");
    }
    QCoreApplication::processEvents();
    return *m_driver;
}

WindowApplication::WindowApplication(int &argc, char **argv)
    : m_application(argc, withPlatform(argv))
{
    dropRepeatedMessages();
}
