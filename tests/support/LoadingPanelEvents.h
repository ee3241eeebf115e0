#pragma once

#include <QObject>
#include <QWidget>

#include <functional>

/// Notices when a window shows its loading panel, and when a load takes the panel down.
///
/// A load of a category closes the panel (or its invisible stand-in) and then processes pending events: what
/// is queued in onClosed runs in the middle of the load.
class LoadingPanelEvents : public QObject
{
public:
    explicit LoadingPanelEvents(QWidget *window);

    /// The panel has just become visible.
    std::function<void(QWidget *panel)> onShown;
    /// The panel, or a panel that was never shown, is being closed.
    std::function<void()> onClosed;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    QWidget *const m_window;
};
