#pragma once

#include <QDateTime>
#include <QFile>
#include <QString>

#include <array>

/// Three kernel files: they have no creation time, and their owner may set their modification time.
///
/// They stay open, because the kernel may drop a closed one together with the time that was set.
class FilesWithoutCreationTime
{
public:
    FilesWithoutCreationTime();

    /// Sets the modification times; false if this system has no such files.
    [[nodiscard]] bool setTimes(const std::array<QDateTime, 3> &times);

    [[nodiscard]] QString path(std::size_t i) const
    {
        return m_files.at(i).fileName();
    }

private:
    std::array<QFile, 3> m_files{QStringLiteral("/proc/self/comm"), QStringLiteral("/proc/self/cmdline"),
        QStringLiteral("/proc/self/environ")};
    bool m_usable = true;
};
