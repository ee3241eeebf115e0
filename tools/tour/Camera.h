#pragma once

#include <QDir>
#include <QStringList>

class QWidget;

/// Takes screenshots of the window together with its dialogs and menus.
class Camera
{
public:
    /// Saves the pictures in \a folder, which is created if it does not exist.
    explicit Camera(const QString &folder);

    /// Saves a picture as "<name>.png". Replaces an existing one.
    void shoot(const QWidget &window, const QString &name);

    /// The last error; empty if there was none.
    [[nodiscard]] QString error() const;
    /// File names of the saved pictures.
    [[nodiscard]] QStringList pictures() const;
    [[nodiscard]] QString folder() const;

private:
    QDir m_folder;
    QStringList m_pictures;
    QString m_error;
};
