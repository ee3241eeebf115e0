#include "tests/model/ExpectedDisk.h"

#include "tests/support/ImmutableFile.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSet>

ExpectedDisk::ExpectedDisk(const QStringList &folders)
    : m_folders(folders)
{
    clear();
}

ExpectedDisk::~ExpectedDisk()
{
    clear();
}

void ExpectedDisk::write(const QString &path, const QByteArray &content)
{
    writeFile(path, content);
    // Null means no file.
    m_files.insert(path, content.isNull() ? QByteArray("") : content);
}

void ExpectedDisk::vanish(const QString &path)
{
    m_locked.erase(path);
    QFile::remove(path);
    m_files.remove(path);
}

void ExpectedDisk::turnIntoFolder(const QString &path)
{
    vanish(path);
    write(path + QStringLiteral("/inside"), "x");
}

bool ExpectedDisk::lock(const QString &path)
{
    if (!m_files.contains(path))
        return false;
    if (m_locked.contains(path))
        return true;
    auto immutable = std::make_unique<ImmutableFile>(path);
    const bool locked = immutable->obstacle().isEmpty();
    if (locked)
        m_locked.emplace(path, std::move(immutable));
    return locked;
}

bool ExpectedDisk::remove(const QString &path)
{
    return !m_locked.contains(path) && m_files.remove(path);
}

QString ExpectedDisk::differences() const
{
    QSet<QString> found;
    for (const QString &folder : m_folders) {
        QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
            QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            const QString path = entries.next();
            if (!entries.fileInfo().isDir())
                found.insert(path);
        }
    }
    const QSet<QString> expected(m_files.keyBegin(), m_files.keyEnd());
    QStringList lines;
    for (const QString &path : expected - found)
        lines.append(QStringLiteral("must still be on the disk: ") + path);
    for (const QString &path : found - expected)
        lines.append(QStringLiteral("must be gone from the disk: ") + path);
    return lines.join(u'\n');
}

QString ExpectedDisk::contentDifferences() const
{
    QStringList lines;
    for (auto file = m_files.cbegin(); file != m_files.cend(); ++file) {
        QFile onDisk(file.key());
        if (!onDisk.open(QIODevice::ReadOnly) || onDisk.readAll() != file.value())
            lines.append(QStringLiteral("has changed its content: ") + file.key());
    }
    return lines.join(u'\n');
}

void ExpectedDisk::clear()
{
    m_locked.clear();
    for (const QString &folder : m_folders) {
        QDir(folder).removeRecursively();
        if (!QDir().mkpath(folder))
            qFatal("Cannot create %s", qPrintable(folder));
    }
    m_files.clear();
}
