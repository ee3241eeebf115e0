#pragma once

#include "app/MainWindow.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QTreeWidget>

#include <QTimer>

#include <functional>

/// Title and text of a message box that was shown and closed.
struct ShownBox
{
    QString title;
    QString text;

    friend bool operator==(const ShownBox &, const ShownBox &) = default;
};

/// The message box after a deletion.
[[nodiscard]] ShownBox deletionBox(int files, int failed);

/// Makes \a timers time out now.
void fire(const QList<QTimer *> &timers);

/// Drives the real window as a user would. Finds controls by their object names.
///
/// Functions that wait return false on timeout.
class WindowDriver
{
public:
    WindowDriver();

    [[nodiscard]] MainWindow &window()
    {
        return m_window;
    }

    /// The control with this object name; aborts the program if there is none.
    template <typename Widget = QWidget>
    [[nodiscard]] Widget *find(const char *name)
    {
        auto *const widget = m_window.findChild<Widget *>(QLatin1StringView(name));
        if (!widget)
            qFatal("The window has no %s", name);
        return widget;
    }

    void click(const char *buttonName);
    /// Calls a slot of the window that no control triggers directly.
    void callSlot(const char *slotName);
    /// The timers of the window with this interval.
    [[nodiscard]] QList<QTimer *> timers(int milliseconds);

    [[nodiscard]] QTreeWidget *tree();
    [[nodiscard]] QString labelText(const char *name);
    /// Object name of the current page.
    [[nodiscard]] QString page();

    /// The listed folders, read from the rows as the scan reads them.
    [[nodiscard]] QStringList folders();
    /// Removes every folder with its delete button.
    void removeAllFolders();
    /// Adds a folder with the Add button and the folder dialog.
    void addFolder(const QString &path);
    /// Replaces the listed folders with \a paths in the folder dialog.
    void setFolders(const QStringList &paths);
    /// Like setFolders(), but without dialogs: faster for many windows or folders.
    void listFolders(const QStringList &paths);

    /// Opens the scan options, calls \a choose with the dialog and closes it with OK.
    void chooseOptions(const std::function<void(QWidget *dialog)> &choose);

    /// Starts a scan and waits for its first rows; see waitForResults().
    bool scan(int milliseconds = 30'000);
    /// Waits until the results page shows the first rows, or the row "No duplicate files".
    bool waitForResults(int milliseconds = 30'000);

    /// Loads all groups of the shown category, batch by batch.
    void loadAllBatches();

    /// Loads all groups by scrolling to the end again and again, as a user would.
    void scrollToTheEnd();

    /// Texts of the group rows.
    [[nodiscard]] QStringList groupTitles();
    /// Paths of all loaded file rows, in the order of the tree.
    [[nodiscard]] QStringList filePaths();
    /// Paths of the loaded file rows that are checked, in the order of the tree.
    [[nodiscard]] QStringList checkedPaths();
    /// The first loaded file row with this path, or null.
    [[nodiscard]] QTreeWidgetItem *fileRow(const QString &path);
    /// Sets the check box of the first row with this path.
    void check(const QString &path, bool checked = true);
    /// Sets the check boxes of all loaded file rows.
    void checkAll(bool checked);

    /// Clicks a button and closes the message boxes that it opens; returns them.
    QList<ShownBox> clickAndCloseBoxes(const char *buttonName);

private:
    MainWindow m_window;
};

/// Runs \a action and calls \a handle with every modal dialog that opens. \a handle must close the dialog, or
/// it is called again.
void withModalDialogs(const std::function<void()> &action, const std::function<void(QWidget *)> &handle);
