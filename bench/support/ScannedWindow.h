#pragma once

#include "bench/support/FileTree.h"
#include "tests/support/WindowDriver.h"

#include <QApplication>

#include <optional>

/// The real window with the result of a real scan.
class ScannedWindow
{
public:
    explicit ScannedWindow(FileTree &tree)
        : m_tree(tree)
    {
    }

    /// The window after a scan of the tree's first \a files files, with the first rows of all categories
    /// loaded. A scan runs only when the number is another one than the last time.
    WindowDriver &withFiles(int files);

private:
    FileTree &m_tree;
    std::optional<WindowDriver> m_driver;
    int m_files = 0;
};

/// The application object of a benchmark with windows: it draws into memory unless the environment names
/// another platform.
class WindowApplication
{
public:
    WindowApplication(int &argc, char **argv);

private:
    QApplication m_application;
};
