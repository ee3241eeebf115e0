#pragma once

#include <QList>
#include <QRandomGenerator>

/// Random choices. The same seed gives the same choices on every machine.
class RandomChoice
{
public:
    explicit RandomChoice(quint32 seed)
        : m_random(seed)
    {
    }

    /// A number from 0 to \a limit - 1.
    [[nodiscard]] int below(qsizetype limit)
    {
        return static_cast<int>(m_random.bounded(static_cast<quint32>(limit)));
    }

    /// An element of \a list, which must not be empty.
    template <typename T>
    [[nodiscard]] T oneOf(const QList<T> &list)
    {
        return list.at(below(list.size()));
    }

private:
    QRandomGenerator m_random;
};
