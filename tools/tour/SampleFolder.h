#pragma once

#include <QStringList>
#include <QTemporaryDir>

#include <optional>

/// A folder that looks like somebody's disk: pictures, letters, music, archives, mail and empty files, many
/// of them with copies. Goes away with the object.
class SampleFolder
{
public:
    /// Makes the folder \a place, which must not exist yet; without a place, one in the temporary folder.
    explicit SampleFolder(const QString &place = {});
    ~SampleFolder();
    Q_DISABLE_COPY_MOVE(SampleFolder)

    /// Why the folder is not complete; empty when it is.
    [[nodiscard]] QString error() const;
    [[nodiscard]] QString path() const;
    /// The folders in it that a person would choose to scan.
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
    /// Empty when the folder could not be made: nothing is removed then.
    QString m_path;
    QString m_error;
};
