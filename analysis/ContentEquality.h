#pragma once

#include "scan/AbandonCheck.h"

#include <QFile>

/// The result of compareContents().
enum class ContentEquality {
    Equal,
    Different,
    FirstUnreadable,  ///< see QFile::errorString() of the first file
    SecondUnreadable, ///< see QFile::errorString() of the second file
    Abandoned,
};

/// Compares two files byte by byte from their current positions to their ends or to the first difference.
///
/// Both must be open for reading and unbuffered. \a abandoned is called before each block; true ends the
/// comparison. Needs at most 2 MiB of memory. Thread-safe for different files.
[[nodiscard]] ContentEquality compareContents(QFile &first, QFile &second, const AbandonCheck &abandoned);
