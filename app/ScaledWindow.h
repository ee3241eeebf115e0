#pragma once

#include <QGraphicsScene>
#include <QGraphicsView>

#include <memory>

class QGraphicsProxyWidget;

/// Shows a window of fixed size scaled down, for a screen that is too small for it.
///
/// Has the title and icon of the window. Menus and dialogs of the window remain separate windows of normal
/// size. QT_SCALE_FACTOR cannot do this: QPainter treats a device pixel ratio below 1 as 1.
class ScaledWindow : public QGraphicsView
{
    Q_OBJECT

public:
    /// \a factor is at most 1. Does not own \a window, which must outlive this object.
    ScaledWindow(QWidget &window, double factor);
    ~ScaledWindow() override;
    Q_DISABLE_COPY_MOVE(ScaledWindow)

    /// Centres the dialogs of the window over this one and keeps them in front of it.
    bool eventFilter(QObject *object, QEvent *event) override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget &m_window;
    QGraphicsScene m_scene;
    QGraphicsProxyWidget *m_proxy;
};

/// Shows \a window. If it does not fit on the primary screen, shows it in a ScaledWindow and returns that;
/// otherwise returns null.
[[nodiscard]] std::unique_ptr<ScaledWindow> showOnPrimaryScreen(QWidget &window);
