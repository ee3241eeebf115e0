#pragma once

#include "tests/support/HostileTree.h"

#include <QByteArrayList>
#include <QRandomGenerator>
#include <QSet>

#include <utility>

/// What names are made of that are text.
[[nodiscard]] QByteArrayList textPieces();
/// Bytes that are no UTF-8: out of place, overlong, surrogates, beyond U+10FFFF, truncated.
[[nodiscard]] QByteArrayList brokenPieces();

/// A tree of hostile names and what a walk has to make of it, known byte by byte.
class RandomTree
{
public:
    /// Fills \a tree, the same way for the same \a seed.
    RandomTree(const HostileTree &tree, quint32 seed);

    /// Paths below the tree of the files that a walk yields, sorted.
    [[nodiscard]] QList<QByteArray> visibleFiles();

    /// Files and folders that are met but left out because of their names.
    [[nodiscard]] int undecodable() const
    {
        return m_undecodable;
    }

private:
    void fill(const QByteArray &folder, int level, bool isVisible);
    /// A name, and whether it is text.
    std::pair<QByteArray, bool> randomName();
    void add(const QByteArray &folder, const QByteArray &name, bool isText, bool isFolder, int level,
        bool isVisible);

    const QByteArray m_root;
    QRandomGenerator m_random;
    QSet<QByteArray> m_all;
    QList<QByteArray> m_visible;
    int m_undecodable = 0;
};
