#pragma once

#include "app/ScaledWindow.h"
#include "tests/support/WindowDriver.h"

#include <QStringList>

#include <memory>

class Camera;

/// Which files the tour may delete.
enum class Deletion { Never, OfCopiesInTheSample };

/// Operates the window like a user and takes screenshots: pages and dialogs, a scan, its results.
class Tour
{
public:
    /// Scans \a folders. Lists \a places on the start page for the screenshot of it.
    Tour(const QStringList &folders, const QStringList &places, Deletion deletion, Camera &camera);

    /// Returns an error message, or an empty string on success.
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
