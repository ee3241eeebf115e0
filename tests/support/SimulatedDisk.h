#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// A disk that answers as few disks do. In a program that has SimulatedDisk.cpp among its sources, some of
/// the system's functions treat the files and folders with these names as it is said here, and all others as
/// ever.
struct SimulatedDisk
{
    /// A folder that seems to hold longFileNames(), whatever it really holds.
    static constexpr const char *longNames = "long names";
    /// A folder that does not tell the types of its entries.
    static constexpr const char *unknownTypes = "unknown types";
    /// A folder that fails after two entries.
    static constexpr const char *failsAfterTwoEntries = "fails after two entries";
    /// A file without birth time.
    static constexpr const char *withoutBirthTime = "without birth time";
    /// A file that was born at 1970-01-01 00:00:00 UTC.
    static constexpr const char *bornAtZero = "born at 0";
    /// A file of which no more than 1000 bytes are read at once.
    static constexpr const char *shortReads = "short reads";
    /// A file that cannot be opened without waiting.
    static constexpr const char *leased = "leased";

    /// A folder that tells nothing of its entries before unblock() is called.
    static constexpr const char *blocked = "blocked";

    static void unblock();

    /// Names of 255 to 765 bytes, the longest that a file system on Linux has.
    [[nodiscard]] static QList<QByteArray> longFileNames();

    struct Range
    {
        qint64 position;
        qint64 count;
        friend bool operator==(const Range &, const Range &) = default;
    };
    /// What was to be prefetched of any file since it was asked last.
    [[nodiscard]] static QList<Range> takePrefetched();
};
