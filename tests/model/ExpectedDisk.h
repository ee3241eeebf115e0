#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>

class ImmutableFile;

/// The expected content of some folders on the disk. Every function changes the disk and the expectation,
/// except remove(), which changes the expectation only: the tested program deletes the file.
class ExpectedDisk
{
public:
    /// Empties \a folders on the disk as well.
    explicit ExpectedDisk(const QStringList &folders);
    ~ExpectedDisk();
    Q_DISABLE_COPY_MOVE(ExpectedDisk)

    void write(const QString &path, const QByteArray &content);
    void vanish(const QString &path);
    /// Replaces the file by a folder with a file in it. Deleting \a path then fails.
    void turnIntoFolder(const QString &path);
    /// Makes the file impossible to delete; false if there is no such file or this system cannot do it.
    bool lock(const QString &path);

    /// Expects that the program has tried to delete \a path; false if that must have failed.
    bool remove(const QString &path);

    /// Content of the file at \a path; null if there is none.
    [[nodiscard]] QByteArray content(const QString &path) const
    {
        return m_files.value(path);
    }
    [[nodiscard]] QStringList files() const
    {
        return m_files.keys();
    }

    /// Missing and unexpected files on the disk, one per line; empty if there are none.
    [[nodiscard]] QString differences() const;
    /// Files with unexpected content, one per line; empty if there are none.
    [[nodiscard]] QString contentDifferences() const;
    /// Makes all files deletable again and empties the folders.
    void clear();

private:
    const QStringList m_folders;
    QHash<QString, QByteArray> m_files;
    std::map<QString, std::unique_ptr<ImmutableFile>> m_locked;
};
