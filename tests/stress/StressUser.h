#pragma once

#include "tests/support/RandomChoice.h"
#include "tests/support/Watchdog.h"
#include "tests/support/WindowDriver.h"

#include <QScopedPointer>
#include <QStringList>

#include <optional>

/// Counts of what the test has reached, to prove that it covers every state.
struct StressCounts
{
    int scans = 0;
    int stops = 0;
    int results = 0;
    int deletions = 0;
    int closedDuringScan = 0;
    int closedWithResults = 0;
    qint64 slowestClosing = 0; ///< milliseconds
};

/// Opens a window, presses random buttons at random moments and closes the window at a random moment.
class StressUser
{
public:
    /// Scans subfolders of \a tree, which are named by their indices. The same \a seed gives the same steps,
    /// but not at the same times.
    StressUser(const QString &tree, int folders, quint32 seed);

    /// Opens, uses and closes one window.
    void useWindow();
    /// The fault of the last window and its steps; empty if there is none.
    [[nodiscard]] QString failure() const
    {
        return m_failure.isEmpty() ? QString() : m_failure + QStringLiteral("after: ") + m_log.join(u", ");
    }
    [[nodiscard]] const StressCounts &counts() const
    {
        return m_counts;
    }

private:
    void openWindow();
    void step();
    void pressSomething();
    void press(const char *button);
    void scroll();
    void letTimePass();
    void waitForResults();
    void closeDialog(QWidget *dialog);
    void closeWindow();
    void record(const QString &step);

    const QString m_tree;
    const int m_folders;
    RandomChoice m_random;
    std::optional<Watchdog> m_watchdog; ///< while a window is in use
    QScopedPointer<WindowDriver> m_driver;
    QStringList m_log;
    QString m_failure;
    StressCounts m_counts;
};
