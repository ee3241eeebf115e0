#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>

class ImmutableFile;

/// What must lie in some folders on the disk, and the hand that changes it: every change goes through here,
/// to the disk and to the expectation alike.
///
/// remove() is the exception. It only expects a file to be gone, because the program is to delete it.
class ExpectedDisk
{
public:
    /// Starts with \a folders empty on the disk as well.
    explicit ExpectedDisk(const QStringList &folders);
    ~ExpectedDisk();
    Q_DISABLE_COPY_MOVE(ExpectedDisk)

    void write(const QString &path, const QByteArray &content);
    void vanish(const QString &path);
    /// Puts a folder with a file in it where the file was, which no deletion of a file can remove.
    void turnIntoFolder(const QString &path);
    /// Makes the file impossible to delete; false when this system cannot.
    bool lock(const QString &path);

    /// Expects the program to have tried to delete \a path; false when that cannot have succeeded.
    bool remove(const QString &path);

    /// Content of the file at \a path; null when there is none.
    [[nodiscard]] QByteArray content(const QString &path) const
    {
        return m_files.value(path);
    }
    [[nodiscard]] QStringList files() const
    {
        return m_files.keys();
    }

    /// What is wrong with the names and kinds of what lies on the disk; empty when all is as expected.
    [[nodiscard]] QString differences() const;
    /// The same for the files' content.
    [[nodiscard]] QString contentDifferences() const;
    /// Takes every lock off and empties the folders.
    void clear();

private:
    const QStringList m_folders;
    QHash<QString, QByteArray> m_files;
    std::map<QString, std::unique_ptr<ImmutableFile>> m_locked;
};
