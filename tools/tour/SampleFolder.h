#pragma once

#include <QStringList>
#include <QTemporaryDir>

#include <optional>

/// A folder with sample files: pictures, letters, music, archives, mail and empty files, many with copies.
/// Deleted with the object.
class SampleFolder
{
public:
    /// Creates the folder \a place, which must not exist; if \a place is empty, a temporary folder.
    explicit SampleFolder(const QString &place = {});
    ~SampleFolder();
    Q_DISABLE_COPY_MOVE(SampleFolder)

    /// The last error; empty if the sample is complete.
    [[nodiscard]] QString error() const;
    [[nodiscard]] QString path() const;
    /// Subfolders to show on the start page.
    [[nodiscard]] QStringList places() const;

private:
    void writeOriginals();
    void writeMail();
    void writeCopies();
    void writeLongPaths();
    QString filePath(const QString &name);
    void write(const QString &name, const QByteArray &content);
    void copy(const QString &from, const QString &to);

    std::optional<QTemporaryDir> m_temporary;
    /// Empty if the folder could not be created; then the destructor deletes nothing.
    QString m_path;
    QString m_error;
};
