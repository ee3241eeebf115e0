#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

/// Folders of 20 files each that a benchmark can have as large as it needs them: what is missing is written
/// when it is asked for. They are in memory where that is possible, and gone with the object.
class FileTree
{
public:
    /// Writes the file with this number; numbers start at 0.
    using Writer = std::function<void(const QString &path, int number)>;

    /// Below \a parent, or in memory when that is empty.
    explicit FileTree(Writer writer, const QString &parent = {});

    /// The first \a count files.
    QStringList paths(int count);
    /// Folders that hold exactly the first \a count files, which must be a multiple of filesPerFolder.
    QStringList folders(int count);
    /// The folder above all others, which holds the first \a count files and those that were written before.
    QString folderOfAll(int count);

    /// Files below each of folders().
    static constexpr int filesPerFolder = 1000;

private:
    [[nodiscard]] QString path(int number) const;

    QTemporaryDir m_root;
    Writer m_write;
    int m_written = 0;
};

/// Writes a file; aborts the program when that fails.
void writeQuickly(const QString &path, const QByteArray &content);

/// Writes a file of \a size bytes that begins with \a content, and has a hole behind it.
void writeWithHole(const QString &path, const QByteArray &content, qint64 size);

/// Files of one size, those with numbers 2n and 2n + 1 being copies of each other.
void writePair(const QString &path, int number);

/// Files of one content.
void writeCopy(const QString &path, int number);
