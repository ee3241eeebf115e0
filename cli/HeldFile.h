#pragma once

#include "cli/Obstacle.h"
#include "scan/FileSurvey.h"

#include <QFile>
#include <QString>

#include <functional>
#include <optional>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

/// Identity of the entry at \a path, links not followed; nothing when there is none.
[[nodiscard]] std::optional<FileIdentity> identityAt(const QString &path);

/// A regular file held open for reading, together with the folder that holds its name.
///
/// It stays the same file when its path leads elsewhere afterwards. Links are followed in the folders of the
/// path, never at its end.
class HeldFile
{
public:
    /// Opens the file at \a path, which must be absolute. Another program may have to give up a lease on it
    /// first; \a abandoned is asked meanwhile.
    HeldFile(const QString &path, const std::function<bool()> &abandoned);
    ~HeldFile();
    Q_DISABLE_COPY_MOVE(HeldFile)

    /// Why the file could not be opened. If there is an obstacle, nothing else may be asked.
    [[nodiscard]] const std::optional<Obstacle> &obstacle() const
    {
        return m_obstacle;
    }

    [[nodiscard]] QString path() const
    {
        return m_path;
    }

    [[nodiscard]] FileIdentity identity() const;
    /// Bytes, when the file was opened.
    [[nodiscard]] qint64 size() const;
    /// Number of names, when the file was opened.
    [[nodiscard]] quint64 links() const;

    /// Open for reading, unbuffered.
    [[nodiscard]] QFile &content()
    {
        return m_content;
    }
    [[nodiscard]] const QFile &content() const
    {
        return m_content;
    }

    /// Why the path does not lead to this file any more, or that the file changed since it was opened.
    [[nodiscard]] std::optional<Obstacle> change() const;

    /// Why the names in the file's folder cannot be changed, as far as the system tells beforehand.
    [[nodiscard]] std::optional<Obstacle> lockedFolder() const;

#ifdef Q_OS_UNIX
    /// Descriptor of the folder, for the calls that end in "at".
    [[nodiscard]] int folder() const
    {
        return m_folder;
    }

    /// The file's own name, as the system knows it.
    [[nodiscard]] QByteArray name() const
    {
        return m_name;
    }

    /// What the system told about the file, when the file was opened.
    [[nodiscard]] const struct stat &status() const
    {
        return m_status;
    }
#endif

private:
    std::optional<Obstacle> open(const std::function<bool()> &abandoned);

    const QString m_path;
    QFile m_content;
#ifdef Q_OS_UNIX
    QByteArray m_name;
    int m_folder = -1;
    struct stat m_status = {};
#else
    /// What the system told about the file when it was opened.
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
