#pragma once

#include <QByteArray>
#include <QRandomGenerator>

/// The same bytes for the same \a seed on every machine; no two positions are alike by plan.
inline QByteArray randomBytes(qsizetype size, quint32 seed)
{
    QRandomGenerator random(seed);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = static_cast<char>(random.bounded(256));
    return bytes;
}
