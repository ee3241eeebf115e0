#pragma once

#include <QtGlobal>

/// Prepares the standard streams of this process: UTF-8 output, and errors instead of signals when a reader
/// closes its pipe. The destructor restores the code page of the Windows console.
class Console
{
public:
    Console();
    Q_DISABLE_COPY_MOVE(Console)
#ifdef Q_OS_WIN
    ~Console();

private:
    unsigned m_codePage = 0;
#endif
};

enum class Stream { Output = 1, Error = 2 };

[[nodiscard]] bool isTerminal(Stream stream);
/// Whether \a stream is a terminal that shows colours and NO_COLOR is unset or empty.
[[nodiscard]] bool showsColours(Stream stream);
/// Width of the terminal behind \a stream in columns; 80 if the stream is no terminal.
[[nodiscard]] int terminalWidth(Stream stream);
