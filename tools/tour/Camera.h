#pragma once

#include <QDir>
#include <QStringList>

class QWidget;

/// Takes pictures of what the screen really shows where the window is: the window and what it has
/// opened.
class Camera
{
public:
    /// Pictures go to \a folder, which is created when it does not exist.
    explicit Camera(const QString &folder);

    /// Saves a picture of that part of the screen as "<name>.png", over one of the same name.
    void shoot(const QWidget &window, const QString &name);

    /// Why pictures are missing; empty when none is.
    [[nodiscard]] QString error() const;
    /// File names of the pictures taken.
    [[nodiscard]] QStringList pictures() const;
    [[nodiscard]] QString folder() const;

private:
    QDir m_folder;
    QStringList m_pictures;
    QString m_error;
};
