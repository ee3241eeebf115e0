#pragma once

#include <QByteArray>
#include <QString>

/// A process that holds a write lease on a file, as file servers do. When another process opens the file, it
/// writes the pending content and then releases the lease.
class LeaseHolder
{
public:
    /// \a content is written to the file at \a path before the lease is released.
    LeaseHolder(const QString &path, const QByteArray &content);
    /// Ends the process.
    ~LeaseHolder();
    Q_DISABLE_COPY_MOVE(LeaseHolder)

    /// False if the system does not support leases.
    [[nodiscard]] bool holdsLease() const
    {
        return m_holdsLease;
    }

private:
    int m_process = -1;
    bool m_holdsLease = false;
};
