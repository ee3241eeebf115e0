#pragma once

#include <QFile>
#include <QString>

#include <optional>

/// A line of the journal, without the time.
struct JournalEntry
{
    /// "trash", "delete", "hardlink" or "reflink".
    QString action;
    QString kept;
    QString path;
    /// "begun", "done", or why the action was not done.
    QString result;
    /// Bytes of the file at \a path.
    qint64 size = 0;
};

/// A file to which a JSON line is appended before and after each action.
class Journal
{
public:
    explicit Journal(const QString &path);

    /// Opens or creates the file, which must be a regular one. Returns why that is not possible.
    [[nodiscard]] std::optional<QString> open();

    /// Appends a line and waits until it is on the disk. Returns why that is not possible; no half of a line
    /// stays in the file then.
    [[nodiscard]] std::optional<QString> append(const JournalEntry &entry);

private:
    [[nodiscard]] std::optional<QString> write(const QByteArray &line);
    [[nodiscard]] std::optional<QString> flushToDisk() const;

    QFile m_file;
};
