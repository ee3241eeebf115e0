#pragma once

#include <QElapsedTimer>
#include <QMutex>
#include <QString>
#include <QThread>
#include <QWaitCondition>

/// Aborts the program if a thread stops calling alive(). First prints the stacks of all threads to standard
/// error if gdb is installed.
class Watchdog : public QThread
{
public:
    /// \a patienceMilliseconds is the maximum time between two calls of alive().
    explicit Watchdog(qint64 patienceMilliseconds);
    ~Watchdog() override;

    /// Resets the time limit. \a doing is printed if no call follows in time.
    void alive(const QString &doing);

protected:
    void run() override;

private:
    const qint64 m_patience;
    QMutex m_mutex;
    QWaitCondition m_wake;
    QElapsedTimer m_sinceAlive;
    QString m_doing;
    bool m_ending = false;
};
