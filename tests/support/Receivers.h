#pragma once

#include <QAbstractButton>

/// Number of connections to clicked() of a button.
inline int clickedReceivers(const QAbstractButton *button)
{
    // Makes a protected function of QObject accessible.
    struct Object : QObject
    {
        using QObject::receivers;
    };
    return (button->*(&Object::receivers))(SIGNAL(clicked(bool)));
}
