#pragma once

#include "bench/support/FileTree.h"
#include "tests/support/WindowDriver.h"

#include <QApplication>

#include <optional>

/// The window with the results of a scan.
class ScannedWindow
{
public:
    explicit ScannedWindow(FileTree &tree)
        : m_tree(tree)
    {
    }

    /// The window after a scan of the tree's first \a files files, with the first rows of the category "all".
    /// Scans only if \a files differs from the last call.
    WindowDriver &withFiles(int files);

private:
    FileTree &m_tree;
    std::optional<WindowDriver> m_driver;
    int m_files = 0;
};

/// The application object of a benchmark with windows. Uses the offscreen platform unless QT_QPA_PLATFORM is
/// set.
class WindowApplication
{
public:
    WindowApplication(int &argc, char **argv);

private:
    QApplication m_application;
};
