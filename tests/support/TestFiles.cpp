#include "tests/support/TestFiles.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(content) != content.size())
        qFatal("Cannot write %s", qPrintable(path));
}

void setModificationTime(const QString &path, qint64 seconds)
{
    QFile file(path);
    const QDateTime start(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC);
    if (!file.open(QIODevice::ReadWrite) ||
        !file.setFileTime(start.addSecs(seconds), QFileDevice::FileModificationTime))
        qFatal("Cannot set the time of %s", qPrintable(path));
}

bool writeFilesOneAfterAnother(const QStringList &paths, const QByteArray &content)
{
    const auto birthTime = [](const QString &path) {
        return QFileInfo(path).fileTime(QFileDevice::FileBirthTime);
    };
    QDateTime previous;
    for (const QString &path : paths) {
        writeFile(path, content);
        if (!birthTime(path).isValid())
            return false;
        // The clock of the file system advances only every few milliseconds.
        while (previous.isValid() && birthTime(path) <= previous) {
            QThread::msleep(2);
            QFile::remove(path);
            writeFile(path, content);
        }
        previous = birthTime(path);
    }
    return true;
}
