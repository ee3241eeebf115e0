#pragma once

#include <QObject>

#include <utility>

/// Queues \a call to the event loop of \a context's thread. It is dropped if \a context is destroyed first.
/// Thread-safe.
template <typename Call>
void queueCall(QObject *context, Call call)
{
    QMetaObject::invokeMethod(context, std::move(call), Qt::QueuedConnection);
}
