#include "cli/Console.h"

#include <QByteArray>

#ifdef Q_OS_WIN
#include <cstdio>

#include <fcntl.h>
#include <io.h>
#include <windows.h>
#else
#include <cerrno>
#include <clocale>
#include <csignal>

#include <fcntl.h>
#include <langinfo.h>
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace {

constexpr int usualWidth = 80;

#ifdef Q_OS_WIN
HANDLE handleOf(Stream stream)
{
    return GetStdHandle(stream == Stream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}
#else
/// Opens the standard streams that the parent closed, so that no other file gets their descriptors. They are
/// opened in the wrong direction, so that reading and writing still fail.
void occupyClosedStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) == -1 && errno == EBADF)
            (void)::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

/// Sets a UTF-8 locale. Qt assumes UTF-8 in every locale but warns if the locale has another encoding.
void useUtf8Locale()
{
    (void)std::setlocale(LC_ALL, "");
    if (qstricmp(nl_langinfo(CODESET), "UTF-8") != 0)
        qputenv("LC_ALL", "C.UTF-8");
}
#endif

} // namespace

#ifdef Q_OS_WIN
Console::Console()
    : m_codePage(GetConsoleOutputCP())
{
    SetConsoleOutputCP(CP_UTF8);
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

Console::~Console()
{
    if (m_codePage != 0)
        SetConsoleOutputCP(m_codePage);
}

bool isTerminal(Stream stream)
{
    DWORD mode = 0;
    return GetConsoleMode(handleOf(stream), &mode) != 0;
}

bool showsColours(Stream stream)
{
    DWORD mode = 0;
    return qEnvironmentVariableIsEmpty("NO_COLOR") && GetConsoleMode(handleOf(stream), &mode) != 0 &&
           SetConsoleMode(handleOf(stream), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

int terminalWidth(Stream stream)
{
    CONSOLE_SCREEN_BUFFER_INFO info = {};
    if (GetConsoleScreenBufferInfo(handleOf(stream), &info) == 0)
        return usualWidth;
    return info.srWindow.Right - info.srWindow.Left + 1;
}
#else
Console::Console()
{
    occupyClosedStreams();
    useUtf8Locale();
    // Makes a write to a closed pipe, or beyond the size limit, fail instead of ending the program.
    (void)std::signal(SIGPIPE, SIG_IGN);
    (void)std::signal(SIGXFSZ, SIG_IGN);
}

bool isTerminal(Stream stream)
{
    return ::isatty(static_cast<int>(stream)) == 1;
}

bool showsColours(Stream stream)
{
    return isTerminal(stream) && qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb";
}

int terminalWidth(Stream stream)
{
    struct winsize size = {};
    return ::ioctl(static_cast<int>(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col
                                                                                        : usualWidth;
}
#endif
