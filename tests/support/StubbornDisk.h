#pragma once

#include <QString>
#include <QStringList>

/// Keeps a file from being changed or removed by anybody, root included, for its lifetime.
class ImmutableFile
{
public:
    explicit ImmutableFile(const QString &path);
    ~ImmutableFile();
    Q_DISABLE_COPY_MOVE(ImmutableFile)

    /// Why the file can be removed all the same; empty when it cannot.
    [[nodiscard]] QString obstacle() const
    {
        return m_obstacle;
    }

private:
    const QString m_path;
    const QString m_obstacle;
};

/// A disk of one mebibyte, to be had at a folder for its lifetime.
class SmallDisk
{
public:
    explicit SmallDisk(const QString &folder);
    ~SmallDisk();
    Q_DISABLE_COPY_MOVE(SmallDisk)

    /// Why there is no such disk; empty when there is.
    [[nodiscard]] QString obstacle() const
    {
        return m_obstacle;
    }

    /// Writes a file that takes every byte that is left.
    [[nodiscard]] bool fillUp(const QString &fileName);
    [[nodiscard]] bool makeReadOnly();

private:
    const QString m_folder;
    const QString m_obstacle;
};

/// Hears of every entry of some folders that this or any other process opens, from its construction on.
class OpenWatch
{
public:
    explicit OpenWatch(const QStringList &folders);
    ~OpenWatch();
    Q_DISABLE_COPY_MOVE(OpenWatch)

    /// False where there is nothing to listen to.
    [[nodiscard]] bool isValid() const
    {
        return m_events >= 0;
    }

    /// Names of the entries opened so far, folders included, each as often as it was.
    [[nodiscard]] QStringList opened();

private:
    const int m_events;
    QStringList m_opened;
};
