#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTest>

/// Template for QTemporaryDir. Prefers a file system in memory, where files are written faster.
inline QString folderTemplate()
{
    const QFileInfo memory(QStringLiteral("/dev/shm"));
    return (memory.isWritable() ? memory.filePath() : QDir::tempPath()) +
           QStringLiteral("/quillory-scale-XXXXXX");
}

inline void writeFileQuickly(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(content) != content.size())
        qFatal("Cannot write %s", qPrintable(path));
}

/// Number and arrangement of the files of a tree.
struct TreeShape
{
    int groups = 0;
    /// Files of each group.
    int copies = 0;
    /// Files without copies.
    int unique = 0;
    int folders = 0;
    QString suffix;
};

/// Writes a tree and a pair of archives. All other files have the same size, so each of them must be read.
inline void writeTree(const QDir &root, const TreeShape &shape)
{
    for (int i = 0; i < shape.folders; ++i)
        QVERIFY(root.mkdir(QString::number(i)));
    const auto write = [&](int content, int copy) {
        const QString path = QStringLiteral("%1/%2-%3.%4")
                                 .arg(QString::number((content + copy) % shape.folders),
                                     QString::number(content), QString::number(copy), shape.suffix);
        writeFileQuickly(root.filePath(path), QByteArray::number(content).rightJustified(16, '0'));
    };
    for (int i = 0; i < shape.groups; ++i) {
        for (int copy = 0; copy < shape.copies; ++copy)
            write(i, copy);
    }
    for (int i = 0; i < shape.unique; ++i)
        write(shape.groups + i, 0);
    writeFileQuickly(root.filePath(QStringLiteral("0/1.zip")), "archive");
    writeFileQuickly(root.filePath(QStringLiteral("0/2.zip")), "archive");
}

inline qsizetype fileCount(const QDir &root, const TreeShape &shape)
{
    qsizetype count = 0;
    for (int i = 0; i < shape.folders; ++i)
        count += QDir(root.filePath(QString::number(i))).entryList(QDir::Files).size();
    return count;
}
