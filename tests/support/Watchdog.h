#pragma once

#include <QElapsedTimer>
#include <QMutex>
#include <QString>
#include <QThread>
#include <QWaitCondition>

/// Aborts the program when a thread that has to give signs of life stops doing so, and writes the stacks of
/// all threads to the standard error output first, where a debugger is installed.
class Watchdog : public QThread
{
public:
    /// Waits at most \a patienceMilliseconds from one sign of life to the next.
    explicit Watchdog(qint64 patienceMilliseconds);
    ~Watchdog() override;

    /// A sign of life. \a doing is written out should it have been the last.
    void alive(const QString &doing);

protected:
    void run() override;

private:
    const qint64 m_patience;
    QMutex m_mutex;
    QWaitCondition m_wake;
    QElapsedTimer m_sinceSign;
    QString m_doing;
    bool m_ending = false;
};
