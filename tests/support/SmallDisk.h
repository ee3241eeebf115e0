#pragma once

#include <QString>

/// A file system of one mebibyte, mounted on a folder during its lifetime.
class SmallDisk
{
public:
    explicit SmallDisk(const QString &folder);
    ~SmallDisk();
    Q_DISABLE_COPY_MOVE(SmallDisk)

    /// Why nothing is mounted; empty on success.
    [[nodiscard]] QString obstacle() const
    {
        return m_obstacle;
    }

    /// Writes a file that takes up all free space.
    [[nodiscard]] bool fillUp(const QString &fileName);
    [[nodiscard]] bool makeReadOnly();

private:
    const QString m_folder;
    const QString m_obstacle;
};
