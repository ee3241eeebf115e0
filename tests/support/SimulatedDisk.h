#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// Replaces some system functions in a program that is built with SimulatedDisk.cpp. Files and folders with
/// the names below behave as described, all others as usual.
struct SimulatedDisk
{
    /// A folder that lists longFileNames() instead of its real entries.
    static constexpr const char *longNames = "long names";
    /// A folder that does not report the types of its entries.
    static constexpr const char *unknownTypes = "unknown types";
    /// A folder whose reads fail after two entries.
    static constexpr const char *failsAfterTwoEntries = "fails after two entries";
    /// A file without birth time.
    static constexpr const char *withoutBirthTime = "without birth time";
    /// A file with the birth time 1970-01-01 00:00:00 UTC.
    static constexpr const char *bornAtZero = "born at 0";
    /// A file whose reads return at most 1000 bytes.
    static constexpr const char *shortReads = "short reads";
    /// A file whose non-blocking open fails.
    static constexpr const char *leased = "leased";

    /// A folder whose reads block until unblock() is called.
    static constexpr const char *blocked = "blocked";

    /// Lets reads of blocked folders continue, now and later.
    static void unblock();

    /// Names of 255 to 765 bytes; 765 is the maximum of all file systems on Linux.
    [[nodiscard]] static QList<QByteArray> longFileNames();

    /// A range of bytes.
    struct Range
    {
        qint64 position;
        qint64 count;
        friend bool operator==(const Range &, const Range &) = default;
    };
    /// The ranges prefetched since the last call, in all files.
    [[nodiscard]] static QList<Range> takePrefetched();
};
