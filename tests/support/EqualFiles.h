#pragma once

#include "cli/Report.h"

#include <QTemporaryDir>

#include <memory>

/// Base of tests with three equal files, a, b and c, of which a report keeps the first.
class EqualFiles
{
protected:
    EqualFiles() = default;
    ~EqualFiles() = default;
    Q_DISABLE_COPY_MOVE(EqualFiles)

    /// Creates new files in a new folder.
    void reset();

    [[nodiscard]] QString path(const QString &name) const
    {
        return m_files + u'/' + name;
    }

    [[nodiscard]] Report abcReport() const;

    /// Contains the folder of the files, and the trash.
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_files;
};
