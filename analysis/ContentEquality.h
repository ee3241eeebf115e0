#pragma once

#include <QFile>

#include <functional>

/// What a comparison of two files byte by byte found.
enum class ContentEquality {
    Equal,
    Different,
    FirstUnreadable,  ///< QFile::errorString() of the first file says why
    SecondUnreadable, ///< QFile::errorString() of the second file says why
    Abandoned,
};

/// Compares two files from where they stand to their ends, in step, until the first difference.
///
/// Both must be open for reading, unbuffered. \a abandoned is asked before each block is read; true ends the
/// comparison. Any thread. Memory does not depend on the size of the files.
[[nodiscard]] ContentEquality compareContents(
    QFile &first, QFile &second, const std::function<bool()> &abandoned);
