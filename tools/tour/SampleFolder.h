#pragma once

#include <QTemporaryDir>

/// A folder in a temporary place that looks like somebody's disk: pictures, letters, music, archives, mail
/// and empty files, many of them with copies. Goes away with the object.
class SampleFolder
{
public:
    SampleFolder();

    /// Why the folder is not complete; empty when it is.
    [[nodiscard]] QString error() const;
    [[nodiscard]] QString path() const;

private:
    void writeOriginals();
    void writeMail();
    void writeCopies();
    QString filePath(const QString &name);
    void write(const QString &name, const QByteArray &content);
    void copy(const QString &from, const QString &to);

    QTemporaryDir m_folder;
    QString m_error;
};
