#pragma once

#include "tests/support/HostileTree.h"

#include <QByteArrayList>
#include <QRandomGenerator>
#include <QSet>

#include <utility>

/// Parts of names that are valid UTF-8.
[[nodiscard]] QByteArrayList textPieces();
/// Parts that are not valid UTF-8: stray bytes, overlong forms, surrogates, beyond U+10FFFF, truncated.
[[nodiscard]] QByteArrayList brokenPieces();

/// Random files and folders with hostile names, and the files that a walk must find.
class RandomTree
{
public:
    /// Fills \a tree. The same \a seed gives the same names.
    RandomTree(const HostileTree &tree, quint32 seed);

    /// Raw paths, relative to the tree, of the files that a walk must find, sorted.
    [[nodiscard]] QList<QByteArray> visibleFiles();

    /// Number of files and folders that a walk must skip because their names are not text.
    [[nodiscard]] int undecodable() const
    {
        return m_undecodable;
    }

private:
    void fill(const QByteArray &folder, int level, bool isVisible);
    /// A name, and true if it is text.
    std::pair<QByteArray, bool> randomName();
    void add(const QByteArray &folder, const QByteArray &name, bool isText, bool isFolder, int level,
        bool isVisible);

    const QByteArray m_root;
    QRandomGenerator m_random;
    QSet<QByteArray> m_all;
    QList<QByteArray> m_visible;
    int m_undecodable = 0;
};
