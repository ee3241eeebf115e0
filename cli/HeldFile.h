#pragma once

#include "cli/Obstacle.h"
#include "scan/AbandonCheck.h"
#include "scan/FileSurvey.h"

#include <QFile>
#include <QString>

#include <optional>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

/// Identity of the entry at \a path. Does not follow a link at its end. Nothing if there is no entry.
[[nodiscard]] std::optional<FileIdentity> identityAt(const QString &path);

/// A regular file that is open for reading, together with its folder.
///
/// It stays the same file if its path leads to another file later. Links are followed in the folders of the
/// path, never at its end. Usable by one thread at a time.
class HeldFile
{
public:
    /// Opens the file at \a path, which must be absolute. Waits while another program holds a lease on the
    /// file, until \a abandoned returns true.
    HeldFile(const QString &path, const AbandonCheck &abandoned);
    ~HeldFile();
    Q_DISABLE_COPY_MOVE(HeldFile)

    /// Why the file could not be opened. If there is an obstacle, only path() may be called.
    [[nodiscard]] const std::optional<Obstacle> &obstacle() const
    {
        return m_obstacle;
    }

    [[nodiscard]] QString path() const
    {
        return m_path;
    }

    [[nodiscard]] FileIdentity identity() const;
    /// Size in bytes when the file was opened.
    [[nodiscard]] qint64 size() const;
    /// Number of names when the file was opened.
    [[nodiscard]] quint64 links() const;

    /// The open file, unbuffered.
    [[nodiscard]] QFile &content()
    {
        return m_content;
    }
    [[nodiscard]] const QFile &content() const
    {
        return m_content;
    }

    /// An obstacle if the path leads to another file or if the file has changed since it was opened.
    [[nodiscard]] std::optional<Obstacle> change() const;

    /// An obstacle if the user may not change the names in the file's folder. Always nothing on Windows,
    /// where only the action itself shows it.
    [[nodiscard]] std::optional<Obstacle> lockedFolder() const;

#ifdef Q_OS_UNIX
    /// Descriptor of the folder, for system calls such as unlinkat().
    [[nodiscard]] int folder() const
    {
        return m_folder;
    }

    /// The last part of the path in the encoding of the file system.
    [[nodiscard]] QByteArray name() const
    {
        return m_name;
    }

    /// Status of the file when it was opened.
    [[nodiscard]] const struct stat &status() const
    {
        return m_status;
    }
#endif

private:
    [[nodiscard]] std::optional<Obstacle> open(const AbandonCheck &abandoned);

    const QString m_path;
    QFile m_content;
#ifdef Q_OS_UNIX
    QByteArray m_name;
    int m_folder = -1;
    struct stat m_status = {};
#else
    /// Status of the file when it was opened.
    struct Facts
    {
        FileIdentity identity;
        qint64 size = 0;
        quint64 links = 0;
    };

    Facts m_facts;
#endif
    std::optional<Obstacle> m_obstacle;
};
