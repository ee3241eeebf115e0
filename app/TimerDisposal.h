#pragma once

class QTimer;

/// Stops \a timer, deletes it and sets it to null; nothing when it is null already.
void discardTimer(QTimer *&timer);

/// The same, but the timer itself goes only when control returns to the event loop.
void discardTimerLater(QTimer *&timer);
