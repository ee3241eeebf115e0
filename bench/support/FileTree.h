#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

/// Files in folders of 20, written when they are first requested. They are in memory if /dev/shm is writable,
/// and are deleted with the object.
class FileTree
{
public:
    /// Writes the file with this number; numbers start at 0.
    using Writer = std::function<void(const QString &path, int number)>;

    /// Creates the files below \a parent, or in memory if \a parent is empty.
    explicit FileTree(Writer writer, const QString &parent = {});

    /// The first \a count files.
    QStringList paths(int count);
    /// Folders with exactly the first \a count files; \a count must be a multiple of filesPerFolder.
    QStringList folders(int count);
    /// The root folder. It has the first \a count files and all files written before.
    QString folderOfAll(int count);

    /// Files below each of folders().
    static constexpr int filesPerFolder = 1000;

private:
    [[nodiscard]] QString path(int number) const;

    QTemporaryDir m_root;
    Writer m_write;
    int m_written = 0;
};

/// Writes a file; aborts the program on failure.
void writeQuickly(const QString &path, const QByteArray &content);

/// Writes a sparse file of \a size bytes that begins with \a content.
void writeWithHole(const QString &path, const QByteArray &content, qint64 size);

/// Files of equal size; 2n and 2n + 1 are copies of each other.
void writePair(const QString &path, int number);

/// Files with equal content.
void writeCopy(const QString &path, int number);
