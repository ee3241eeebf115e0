#include "app/TimerDisposal.h"

#include <QTimer>

#include <utility>

void discardTimer(QTimer *&timer)
{
    delete std::exchange(timer, nullptr);
}

void discardTimerLater(QTimer *&timer)
{
    if (!timer)
        return;
    timer->stop();
    std::exchange(timer, nullptr)->deleteLater();
}
