#pragma once

#include <QByteArrayView>

#include <optional>

class QString;

/// How writing to standard output has ended.
enum class WriteResult {
    Written,
    /// The reader has seen enough, as `head` does. No error.
    ReaderGone,
    Interrupted,
    /// See the reason.
    Failed,
};

/// Writes \a bytes to standard output at once, unbuffered. Sets \a reason, the system's own words, when it
/// fails. Ends early when interrupted().
[[nodiscard]] WriteResult writeToStandardOutput(QByteArrayView bytes, QString &reason);

/// Writes \a text as writeToStandardOutput() and prints a message when that fails. False when it does.
[[nodiscard]] bool printToStandardOutput(const QString &text);
