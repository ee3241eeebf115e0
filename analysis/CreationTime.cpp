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
    QDateTime time = file.fileTime(QFileDevice::FileBirthTime);
    if (!time.isValid())
        time = file.fileTime(QFileDevice::FileModificationTime);
    return time.isValid() ? std::optional(time.toMSecsSinceEpoch()) : std::nullopt;
}

#if defined(Q_OS_LINUX) && defined(STATX_BTIME)
/// Nothing when the system does not tell, 1970-01-01 UTC included, as QFileInfo has it.
std::optional<qint64> milliseconds(const statx_timestamp &time, bool known)
{
    const qint64 value = qint64(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000;
    return known && value != 0 ? std::optional(value) : std::nullopt;
}
#endif

} // namespace

std::optional<qint64> creationTime(const QString &path)
{
#if defined(Q_OS_LINUX) && defined(STATX_BTIME)
    // QFileInfo's local times look up the time zone for each file, under one lock for all threads: five times
    // the work of asking for the time itself.
    struct statx facts = {};
    const QByteArray name = QFile::encodeName(path);
    if (::statx(AT_FDCWD, name.constData(), AT_NO_AUTOMOUNT, STATX_BTIME | STATX_MTIME, &facts) == 0) {
        const auto birth = milliseconds(facts.stx_btime, (facts.stx_mask & STATX_BTIME) != 0);
        return birth ? birth : milliseconds(facts.stx_mtime, (facts.stx_mask & STATX_MTIME) != 0);
    }
#endif
    return creationTimeByQt(path);
}
