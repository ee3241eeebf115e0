#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

/// What a report proposes for a file.
enum class FileAction {
    Keep,      ///< the kept file of its group
    Remove,    ///< a further copy
    Link,      ///< a further name of another file of the group
    Reference, ///< in a reference folder: never removed
};

/// One path of a group.
struct ReportFile
{
    FileAction action = FileAction::Remove;
    quint64 device = 0;
    quint64 inode = 0;
    quint64 links = 1;
    /// Milliseconds since 1970-01-01 UTC.
    qint64 modified = 0;
    /// Absolute in reports; as given by the user in texts and lists.
    QString path;
};

/// Files of equal content.
struct ReportGroup
{
    QList<ReportFile> files;
    /// Index of the kept file.
    qsizetype kept = 0;
    /// Bytes of one copy.
    qint64 size = 0;
};

/// Totals of a report.
struct ReportSummary
{
    /// Files that passed the filters, each counted once.
    qint64 files = 0;
    qint64 groups = 0;
    qint64 removableBytes = 0;
    qint64 removableFiles = 0;
    qint64 undecodableNames = 0;
    qint64 unreadable = 0;
};

/// What `find` found, and what `remove` reads.
struct Report
{
    /// "bytes" or "sample".
    QString compared;
    /// UTC.
    QDateTime created;
    QStringList folders;
    QList<ReportGroup> groups;
    ReportSummary summary;
    /// Of the program that wrote the report.
    QString version;
};
