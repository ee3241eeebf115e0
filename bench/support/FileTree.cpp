#include "bench/support/FileTree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int filesPerInnerFolder = 20;

QString folderTemplate(const QString &parent)
{
    const QFileInfo memory(u"/dev/shm"_s);
    const QString place = !parent.isEmpty()     ? parent
                          : memory.isWritable() ? memory.filePath()
                                                : QDir::tempPath();
    return place + u"/quillory-bench-XXXXXX"_s;
}

} // namespace

FileTree::FileTree(Writer writer, const QString &parent)
    : m_root(folderTemplate(parent))
    , m_write(std::move(writer))
{
    if (!m_root.isValid())
        qFatal("Cannot create a folder for files: %s", qPrintable(m_root.errorString()));
}

QString FileTree::path(int number) const
{
    return m_root.path() + QString::asprintf("/%04d/%02d/file-%06d.txt", number / filesPerFolder,
                               number % filesPerFolder / filesPerInnerFolder, number);
}

QStringList FileTree::paths(int count)
{
    for (; m_written < count; ++m_written) {
        const QString file = path(m_written);
        if (m_written % filesPerInnerFolder == 0)
            QDir().mkpath(QFileInfo(file).path());
        m_write(file, m_written);
    }
    QStringList result;
    result.reserve(count);
    for (int number = 0; number < count; ++number)
        result.append(path(number));
    return result;
}

QStringList FileTree::folders(int count)
{
    Q_ASSERT(count % filesPerFolder == 0);
    // Otherwise a later, larger count would add files to a folder that is already in use.
    paths(std::max(count, m_written));
    QStringList result;
    for (int number = 0; number < count; number += filesPerFolder)
        result.append(QFileInfo(QFileInfo(path(number)).path()).path());
    return result;
}

QString FileTree::folderOfAll(int count)
{
    paths(count);
    return m_root.path();
}

void writeQuickly(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(content) != content.size())
        qFatal("Cannot write %s", qPrintable(path));
}

void writeWithHole(const QString &path, const QByteArray &content, qint64 size)
{
    writeQuickly(path, content);
    if (!QFile::resize(path, size))
        qFatal("Cannot resize %s", qPrintable(path));
}

void writePair(const QString &path, int number)
{
    writeQuickly(path, QByteArray::number(number / 2).rightJustified(16, '0'));
}

void writeCopy(const QString &path, [[maybe_unused]] int number)
{
    writeQuickly(path, "the same");
}
