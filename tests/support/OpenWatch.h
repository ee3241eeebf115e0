#pragma once

#include <QStringList>

/// Records which entries of some folders any process opens.
class OpenWatch
{
public:
    explicit OpenWatch(const QStringList &folders);
    ~OpenWatch();
    Q_DISABLE_COPY_MOVE(OpenWatch)

    /// False if this system reports no events.
    [[nodiscard]] bool isValid() const
    {
        return m_events >= 0;
    }

    /// Names of the entries, folders included, opened since construction; one for each time.
    [[nodiscard]] QStringList opened();

private:
    const int m_events;
    QStringList m_opened;
};
