#pragma once

#include <QByteArray>
#include <QRandomGenerator>

/// Pseudo-random bytes. The same \a seed gives the same bytes on every machine.
inline QByteArray randomBytes(qsizetype size, quint32 seed)
{
    QRandomGenerator random(seed);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = static_cast<char>(random.bounded(256));
    return bytes;
}
