#pragma once

#include <QByteArray>
#include <QString>

/// A process that holds a write lease on a file, as file servers do. As soon as somebody wants to open the
/// file, it writes what it has kept back, and then gives the lease up.
class LeaseHolder
{
public:
    /// \a content replaces what the file at \a path holds.
    LeaseHolder(const QString &path, const QByteArray &content);
    /// Ends the process.
    ~LeaseHolder();
    Q_DISABLE_COPY_MOVE(LeaseHolder)

    /// False where there are no leases.
    [[nodiscard]] bool holdsLease() const
    {
        return m_holdsLease;
    }

private:
    int m_process = -1;
    bool m_holdsLease = false;
};
