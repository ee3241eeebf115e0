#include "cli/Journal.h"

#include "cli/FilePath.h"

#include <QDateTime>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#endif

using Qt::StringLiterals::operator""_s;

namespace {

/// Whether the file at \a path ends in the middle of a line, which a killed run can cause.
bool endsWithinLine(const QString &path)
{
    QFile file(path);
    char last = '\n';
    return file.open(QFile::ReadOnly) && file.size() > 0 && file.seek(file.size() - 1) &&
           file.getChar(&last) && last != '\n';
}

#ifdef Q_OS_UNIX

/// Waits until the file or folder behind \a descriptor is on disk.
std::optional<QString> synchronise(int descriptor)
{
    int result = 0;
    do {
        result = ::fsync(descriptor);
    } while (result != 0 && errno == EINTR);
    return result == 0 ? std::nullopt : std::optional(qt_error_string(errno));
}

/// Waits until the names in the folder of \a path are on disk.
void synchroniseFolder(const QString &path)
{
    const int folder =
        ::open(QFile::encodeName(QFileInfo(path).path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    (void)synchronise(folder);
    ::close(folder);
}

#endif

} // namespace

Journal::Journal(const QString &path)
    : m_file(asFilePath(path))
{
}

std::optional<QString> Journal::open()
{
    const bool isNew = !m_file.exists();
    // A device or a pipe cannot be flushed to disk.
    if (!isNew && !QFileInfo(m_file).isFile())
        return u"it is no regular file"_s;
    const bool needsLineBreak = endsWithinLine(m_file.fileName());
    if (!m_file.open(QFile::Append | QFile::Unbuffered))
        return m_file.errorString();
#ifdef Q_OS_UNIX
    if (isNew)
        synchroniseFolder(m_file.fileName());
#else
    Q_UNUSED(isNew)
#endif
    return needsLineBreak ? write("\n") : std::nullopt;
}

std::optional<QString> Journal::append(const JournalEntry &entry)
{
    const QJsonObject object{{u"action"_s, entry.action}, {u"kept"_s, entry.kept}, {u"path"_s, entry.path},
        {u"result"_s, entry.result}, {u"size"_s, entry.size},
        {u"time"_s, QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs)}};
    return write(QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n');
}

std::optional<QString> Journal::write(const QByteArray &line)
{
    const qint64 sizeBefore = m_file.size();
    if (m_file.write(line) == line.size())
        return flushToDisk();
    const QString reason = m_file.errorString();
    m_file.resize(sizeBefore);
    return reason;
}

std::optional<QString> Journal::flushToDisk() const
{
#ifdef Q_OS_WIN
    if (::FlushFileBuffers(reinterpret_cast<HANDLE>(::_get_osfhandle(m_file.handle()))) != 0)
        return std::nullopt;
    return qt_error_string(static_cast<int>(::GetLastError()));
#else
    return synchronise(m_file.handle());
#endif
}
