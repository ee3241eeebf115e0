#pragma once

#include <QGraphicsScene>
#include <QGraphicsView>

#include <memory>

class QGraphicsProxyWidget;

/// Shows a window of fixed size smaller than it is, for a screen without enough room for it.
///
/// Has the window's title and icon. Menus and dialogs of the window stay windows of their own, in their own
/// size. QT_SCALE_FACTOR cannot do this: QPainter takes a device pixel ratio below 1 for 1.
class ScaledWindow : public QGraphicsView
{
    Q_OBJECT

public:
    /// \a factor is at most 1. Does not own \a window, which has to live longer.
    ScaledWindow(QWidget &window, double factor);
    ~ScaledWindow() override;
    Q_DISABLE_COPY_MOVE(ScaledWindow)

    /// Places the dialogs of the window over the middle of this one and keeps them in front of it.
    bool eventFilter(QObject *object, QEvent *event) override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget &m_window;
    QGraphicsScene m_scene;
    QGraphicsProxyWidget *m_proxy;
};

/// Shows \a window as it is if it fits on the primary screen; otherwise returns a smaller window that shows
/// it.
[[nodiscard]] std::unique_ptr<ScaledWindow> showOnPrimaryScreen(QWidget &window);
