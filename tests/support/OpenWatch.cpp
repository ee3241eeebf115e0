#include "tests/support/OpenWatch.h"

#ifdef Q_OS_LINUX

#include <QFile>

#include <sys/inotify.h>
#include <unistd.h>

namespace {

int watchFolders(const QStringList &folders)
{
    const int events = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    for (const QString &folder : folders) {
        if (events >= 0)
            ::inotify_add_watch(events, QFile::encodeName(folder).constData(), IN_OPEN);
    }
    return events;
}

} // namespace

OpenWatch::OpenWatch(const QStringList &folders)
    : m_events(watchFolders(folders))
{
}

OpenWatch::~OpenWatch()
{
    if (m_events >= 0)
        ::close(m_events);
}

QStringList OpenWatch::opened()
{
    alignas(inotify_event) char buffer[16384];
    for (ssize_t length = 0; (length = ::read(m_events, buffer, sizeof buffer)) > 0;) {
        for (ssize_t position = 0; position < length;) {
            const auto *const event = reinterpret_cast<const inotify_event *>(buffer + position);
            if (event->len > 0)
                m_opened.append(QFile::decodeName(event->name));
            position += static_cast<ssize_t>(sizeof *event + event->len);
        }
    }
    return m_opened;
}

#else

OpenWatch::OpenWatch(const QStringList &)
    : m_events(-1)
{
}

OpenWatch::~OpenWatch() = default;

QStringList OpenWatch::opened()
{
    return m_opened;
}

#endif
