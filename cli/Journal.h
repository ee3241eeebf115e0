#pragma once

#include <QFile>
#include <QString>

#include <optional>

/// A line of the journal. Journal::append() adds the time.
struct JournalEntry
{
    /// "trash", "delete", "hardlink" or "reflink".
    QString action;
    QString kept;
    QString path;
    /// "begun", "done", or the reason why the file was left alone.
    QString result;
    /// Size of the file at \a path in bytes.
    qint64 size = 0;
};

/// A file to which the program appends a JSON line before and after each action.
class Journal
{
public:
    explicit Journal(const QString &path);

    /// Opens or creates the file, which must be a regular one. Returns the reason for a failure.
    [[nodiscard]] std::optional<QString> open();

    /// Appends a line and waits until it is on disk. Returns the reason for a failure, after which the file
    /// holds no part of the line.
    [[nodiscard]] std::optional<QString> append(const JournalEntry &entry);

private:
    [[nodiscard]] std::optional<QString> write(const QByteArray &line);
    [[nodiscard]] std::optional<QString> flushToDisk() const;

    QFile m_file;
};
