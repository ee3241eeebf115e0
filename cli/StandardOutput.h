#pragma once

#include <QByteArrayView>

class QString;

inline constexpr int standardOutput = 1;

/// How writing to a stream ended.
enum class WriteResult {
    Written,
    /// The reader closed the pipe, as `head` does. No error.
    ReaderGone,
    /// See interrupted().
    Interrupted,
    /// The reason is set.
    Failed,
};

/// Writes \a bytes to \a stream, a file descriptor, unbuffered. On failure, sets \a reason to the message of
/// the system. Ends early if interrupted().
[[nodiscard]] WriteResult writeToStream(int stream, QByteArrayView bytes, QString &reason);

/// Writes \a text to standard output. Prints a message and returns false on failure.
[[nodiscard]] bool printToStandardOutput(const QString &text);
