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

/// The box that Delete ends with.
[[nodiscard]] ShownBox deletionBox(int files, int failed);

/// Has \a timers time out at once.
void fire(const QList<QTimer *> &timers);

/// Works the real window the way a person does, finding every control by its object name.
///
/// Functions that wait return false when the awaited did not happen within their time limit.
class WindowDriver
{
public:
    WindowDriver();

    [[nodiscard]] MainWindow &window()
    {
        return m_window;
    }

    /// The control with this object name; aborts the program when there is none.
    template <typename Widget = QWidget>
    [[nodiscard]] Widget *find(const char *name)
    {
        auto *const widget = m_window.findChild<Widget *>(QLatin1StringView(name));
        if (!widget)
            qFatal("The window has no %s", name);
        return widget;
    }

    void click(const char *buttonName);
    /// Calls a slot of the window that no control reaches directly.
    void callSlot(const char *slotName);
    /// The window's timers with this interval.
    [[nodiscard]] QList<QTimer *> timers(int milliseconds);

    [[nodiscard]] QTreeWidget *tree();
    [[nodiscard]] QString labelText(const char *name);
    /// Object name of the page that is shown.
    [[nodiscard]] QString page();

    /// The places to scan, read from the rows as the scan reads them.
    [[nodiscard]] QStringList folders();
    /// Removes every place with its own delete button.
    void removeAllFolders();
    /// Adds a place with the Add button and the folder dialog.
    void addFolder(const QString &path);
    /// Makes \a paths the only places to scan.
    void setFolders(const QStringList &paths);
    /// The same without a dialog for each of them, for tests that need many windows or places.
    void listFolders(const QStringList &paths);

    /// Opens the scan options, lets \a choose change them and closes the dialog with OK.
    void chooseOptions(const std::function<void(QWidget *dialog)> &choose);

    /// Presses Scan and waits for the first rows of the results page.
    bool scan(int milliseconds = 30'000);
    /// Waits until a delivered result has its first rows (or the row that says there are none).
    bool waitForResults(int milliseconds = 30'000);

    /// Puts every group of the shown category into the tree, batch by batch.
    void loadAllBatches();

    /// The same as a hand on the scroll bar does, the window laying its rows out in between.
    void scrollToTheEnd();

    /// Texts of the group rows.
    [[nodiscard]] QStringList groupTitles();
    /// Paths of all loaded file rows, in the order of the tree.
    [[nodiscard]] QStringList filePaths();
    /// Paths of the loaded file rows that are checked, in the order of the tree.
    [[nodiscard]] QStringList checkedPaths();
    /// The first loaded file row with this path, or null.
    [[nodiscard]] QTreeWidgetItem *fileRow(const QString &path);
    void check(const QString &path, bool checked = true);
    /// Gives every loaded file row the same state.
    void checkAll(bool checked);

    /// Presses a button and closes the message boxes that it brings up; returns them.
    QList<ShownBox> clickAndCloseBoxes(const char *buttonName);

private:
    MainWindow m_window;
};

/// Runs \a action while every modal dialog that comes up is handed to \a handle, which has to close it.
void withModalDialogs(const std::function<void()> &action, const std::function<void(QWidget *)> &handle);
