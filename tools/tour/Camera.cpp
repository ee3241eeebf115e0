#include "tools/tour/Camera.h"

#include <QApplication>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

namespace {

constexpr int smallestFile = 0; // PNG quality 0: highest compression

/// Paints immediately, because paint events may still be pending when a picture is taken.
void paintEverything()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        if (widget->isVisible())
            widget->repaint();
    }
}

/// The part of the screen that the window, its dialogs and its menus cover; the whole screen if the window is
/// shown scaled.
QRect coveredPlace(const QWidget &window)
{
    if (window.graphicsProxyWidget())
        return window.screen()->geometry();
    QRect place = window.frameGeometry();
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (const QWidget *widget : widgets) {
        if (widget->isVisible())
            place |= widget->frameGeometry();
    }
    return place & window.screen()->geometry();
}

} // namespace

Camera::Camera(const QString &folder)
    : m_folder(folder)
{
    if (!m_folder.mkpath(QStringLiteral("."))) {
        m_error = QStringLiteral("cannot create the folder %1").arg(folder);
        return;
    }
    m_folder.makeAbsolute();
}

void Camera::shoot(const QWidget &window, const QString &name)
{
    paintEverything();
    const QRect place = coveredPlace(window);
    const QPixmap picture =
        window.screen()->grabWindow(0, place.x(), place.y(), place.width(), place.height());
    const QString file = name + QStringLiteral(".png");
    if (picture.isNull() || !picture.save(m_folder.filePath(file), "png", smallestFile)) {
        m_error = QStringLiteral("cannot write the picture %1").arg(m_folder.filePath(file));
        return;
    }
    if (!m_pictures.contains(file))
        m_pictures.append(file);
}

QString Camera::error() const
{
    return m_error;
}

QStringList Camera::pictures() const
{
    return m_pictures;
}

QString Camera::folder() const
{
    return m_folder.path();
}
