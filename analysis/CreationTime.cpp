#include "analysis/CreationTime.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#include <sys/stat.h>
#endif

namespace {

std::optional<qint64> creationTimeByQt(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return std::nullopt;
    QDateTime time = file.fileTime(QFileDevice::FileBirthTime);
    if (!time.isValid())
        time = file.fileTime(QFileDevice::FileModificationTime);
    // Qt returns an invalid time for 1970-01-01 00:00:00 UTC.
    return time.isValid() ? time.toMSecsSinceEpoch() : 0;
}

#if defined(Q_OS_LINUX) && defined(STATX_BTIME)
qint64 milliseconds(const statx_timestamp &time)
{
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000;
}

/// The birth time; nothing if it is unknown. Like QFileInfo, treats 1970-01-01 00:00:00 UTC as unknown.
std::optional<qint64> birthTime(const struct statx &facts)
{
    const qint64 time = milliseconds(facts.stx_btime);
    return (facts.stx_mask & STATX_BTIME) != 0 && time != 0 ? std::optional(time) : std::nullopt;
}
#endif

} // namespace

std::optional<qint64> creationTime(const QString &path)
{
#if defined(Q_OS_LINUX) && defined(STATX_BTIME)
    // Not QFileInfo: it converts each time to local time under a lock that all threads share, which takes
    // five times as long as statx().
    struct statx facts = {};
    const QByteArray name = QFile::encodeName(path);
    if (::statx(AT_FDCWD, name.constData(), AT_NO_AUTOMOUNT, STATX_BTIME | STATX_MTIME, &facts) == 0)
        return birthTime(facts).value_or(milliseconds(facts.stx_mtime));
#endif
    return creationTimeByQt(path);
}
