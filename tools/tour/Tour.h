#pragma once

#include "app/ScaledWindow.h"
#include "tests/support/WindowDriver.h"

#include <QStringList>

#include <memory>

class Camera;

/// What the tour may do with the files it finds.
enum class Deletion { Never, OfCopiesInTheSample };

/// The way through the window that a person would go: look at everything, scan, look at the results.
class Tour
{
public:
    /// Scans \a folders; shows \a places on the start page before.
    Tour(const QStringList &folders, const QStringList &places, Deletion deletion, Camera &camera);

    /// Returns what went wrong; empty when nothing did.
    [[nodiscard]] QString run();

private:
    void visitStartPage();
    void visitDialogs();
    void visitResults();
    void visitCategories();
    void visitLongPath();
    void visitSelection();
    [[nodiscard]] QString deleteCopies();
    void shoot(const char *name);

    const QStringList m_folders;
    const QStringList m_places;
    const Deletion m_deletion;
    Camera &m_camera;
    WindowDriver m_driver;
    const std::unique_ptr<ScaledWindow> m_scaledWindow;
};
