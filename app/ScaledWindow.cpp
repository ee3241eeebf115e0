#include "app/ScaledWindow.h"

#include "app/ScreenFit.h"

#include <QApplication>
#include <QGraphicsProxyWidget>
#include <QPaintEvent>
#include <QWindow>

#include <algorithm>

ScaledWindow::ScaledWindow(QWidget &window, double factor)
    : m_window(window)
    , m_proxy(m_scene.addWidget(&window))
{
    // Without the flag, Qt would show the dialogs of the window inside the scene.
    window.overrideWindowFlags(window.windowFlags() | Qt::BypassGraphicsProxyWidget);
    m_proxy->setFlag(QGraphicsItem::ItemUsesExtendedStyleOption); // limits painting to the exposed part
    setScene(&m_scene);
    setSceneRect(window.rect());
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setRenderHint(QPainter::SmoothPixmapTransform);
    scale(factor, factor);
    setFixedSize((QSizeF(window.size()) * factor).toSize());
    setWindowTitle(window.windowTitle());
    setWindowIcon(window.windowIcon());
    qApp->installEventFilter(this);
}

ScaledWindow::~ScaledWindow()
{
    m_proxy->setWidget(nullptr); // the proxy would delete the window
}

bool ScaledWindow::eventFilter(QObject *object, QEvent *event)
{
    auto *const widget = qobject_cast<QWidget *>(object);
    if (event->type() == QEvent::Show && widget && widget->windowType() == Qt::Dialog &&
        widget->parentWidget() == &m_window) {
        widget->move(geometry().center() - widget->rect().center());
        widget->windowHandle()->setTransientParent(windowHandle());
    }
    return QGraphicsView::eventFilter(object, event);
}

/// Paints in bands. Qt scales a taller image on the global thread pool and waits for it, but a scan may keep
/// every thread of the pool busy.
void ScaledWindow::paintEvent(QPaintEvent *event)
{
    // Qt uses the pool for 96 or more device pixels; 30 pixels stay below that at a device pixel ratio of 3.
    constexpr int bandHeight = 30;
    const QRect exposed = event->rect();
    for (int top = exposed.top(); top <= exposed.bottom(); top += bandHeight) {
        const int height = std::min(bandHeight, exposed.bottom() + 1 - top);
        QPaintEvent band(QRect(exposed.left(), top, exposed.width(), height));
        QGraphicsView::paintEvent(&band);
    }
}

std::unique_ptr<ScaledWindow> showOnPrimaryScreen(QWidget &window)
{
    const double factor = primaryScreenFitFactor(window.size());
    if (factor == 1) {
        window.show();
        return nullptr;
    }
    auto scaled = std::make_unique<ScaledWindow>(window, factor);
    scaled->show();
    return scaled;
}
