#include "tests/support/LoadingPanelEvents.h"

#include <QApplication>
#include <QEvent>

LoadingPanelEvents::LoadingPanelEvents(QWidget *window)
    : m_window(window)
{
    QApplication::instance()->installEventFilter(this);
}

bool LoadingPanelEvents::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::Show && event->type() != QEvent::Close)
        return false;
    auto *const panel = qobject_cast<QWidget *>(object);
    if (!panel || panel->parentWidget() != m_window ||
        !panel->windowFlags().testFlag(Qt::FramelessWindowHint) ||
        (panel->windowFlags() & Qt::WindowType_Mask) != Qt::Dialog)
        return false;
    if (event->type() == QEvent::Show && onShown)
        onShown(panel);
    if (event->type() == QEvent::Close && onClosed)
        onClosed();
    return false;
}
