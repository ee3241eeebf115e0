#pragma once

#include "tests/support/WindowDriver.h"

#include <QStringList>

class Camera;

/// What the tour may do with the files it finds.
enum class Deletion { Never, OfCopiesInTheSample };

/// The way through the window that a person would go: look at everything, scan, look at the results.
class Tour
{
public:
    Tour(const QStringList &folders, Deletion deletion, Camera &camera);

    /// Returns what went wrong; empty when nothing did.
    [[nodiscard]] QString run();

private:
    void visitStartPage();
    void visitDialogs();
    void visitResults();
    void visitSelection();
    [[nodiscard]] QString deleteCopies();
    void shoot(const char *name);

    const QStringList m_folders;
    const Deletion m_deletion;
    Camera &m_camera;
    WindowDriver m_driver;
};
