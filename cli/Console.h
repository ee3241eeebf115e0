#pragma once

#include <QtGlobal>

/// The standard streams of this process, made ready for UTF-8 and for readers that go away. Restores what it
/// changed of the console of Windows.
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

/// Whether a person looks at the stream.
[[nodiscard]] bool isTerminal(Stream stream);
/// Whether the stream is a terminal that shows colours, and the user has not asked for none (NO_COLOR).
[[nodiscard]] bool showsColours(Stream stream);
/// Columns of the terminal behind \a stream, 80 where there is none.
[[nodiscard]] int terminalWidth(Stream stream);
