#pragma once

class QTimer;

/// Stops and deletes \a timer and sets it to null. Does nothing if it is null.
void discardTimer(QTimer *&timer);

/// Like discardTimer(), but deletes the timer when control returns to the event loop.
void discardTimerLater(QTimer *&timer);
