#pragma once

#include <QObject>
#include <QWidget>

#include <functional>

/// Detects when a window shows its loading panel and when a load closes the panel.
///
/// A load of a category closes the panel, or a panel that was never shown, and then processes pending events.
/// Calls that onClosed queues run in the middle of the load.
class LoadingPanelEvents : public QObject
{
public:
    explicit LoadingPanelEvents(QWidget *window);

    /// Called when the panel becomes visible.
    std::function<void(QWidget *panel)> onShown;
    /// Called when the panel, or a panel that was never shown, is closed.
    std::function<void()> onClosed;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    QWidget *const m_window;
};
