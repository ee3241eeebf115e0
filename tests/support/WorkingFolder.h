#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A temporary folder that is the current folder of the process while the object exists.
class WorkingFolder
{
public:
    /// Creates \a folders below the temporary folder.
    explicit WorkingFolder(const QStringList &folders);
    ~WorkingFolder();
    Q_DISABLE_COPY_MOVE(WorkingFolder)

    /// The absolute path of \a name.
    [[nodiscard]] QString path(const QString &name) const;
    /// The absolute path of the folder itself.
    [[nodiscard]] QString path() const;

private:
    const QTemporaryDir m_folder;
    const QString m_previousFolder;
};
