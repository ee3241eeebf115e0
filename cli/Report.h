#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

/// What a report proposes for a file.
enum class FileAction {
    Keep,      ///< the kept file of its group
    Remove,    ///< a copy, which `remove` acts on
    Link,      ///< a further name of another file of the group
    Reference, ///< a file of a reference folder, which is never removed
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
    /// Absolute in JSON and CSV. Begins with the folder as the user gave it in text and lists of paths.
    QString path;
};

/// Files of equal content.
struct ReportGroup
{
    QList<ReportFile> files;
    /// Index of the kept file; -1 if a parsed report has no valid index.
    qsizetype kept = 0;
    /// Size of each file in bytes.
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

/// The result of `find`, and the input of `remove`.
struct Report
{
    /// How the files were compared: "bytes" or "sample".
    QString compared;
    /// UTC.
    QDateTime created;
    /// Absolute paths: the folders that were given, then the reference folders, each once.
    QStringList folders;
    QList<ReportGroup> groups;
    ReportSummary summary;
    /// Version of the program that wrote the report.
    QString version;
};
