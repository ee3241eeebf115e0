#pragma once

#include <QAbstractButton>

/// Number of connections to a button's clicked().
inline int clickedReceivers(const QAbstractButton *button)
{
    // Makes a protected function of QObject accessible.
    struct Object : QObject
    {
        using QObject::receivers;
    };
    return (button->*(&Object::receivers))(SIGNAL(clicked(bool)));
}
