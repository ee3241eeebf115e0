#pragma once

#include <QDir>
#include <QStringList>

class QWidget;

/// Takes pictures of what the screen really shows where the window is: the window and whatever covers it.
class Camera
{
public:
    /// Pictures go to \a folder, which is created and emptied of the pictures of an earlier tour.
    explicit Camera(const QString &folder);

    /// Saves a picture of the window's place on the screen as "<name>.png", over one of the same name.
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
