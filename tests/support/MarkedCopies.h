#pragma once

#include "tests/support/HostileTree.h"
#include "tests/support/WindowDriver.h"

#include <QStringList>

#include <memory>

/// The outcome for a file when Delete is pressed.
enum class Fate {
    Deleted,  ///< removed and counted as deleted
    Failed,   ///< unchanged and counted as failed
    Unmarked, ///< unchanged: it had no row and so was not marked
};

/// Base of test classes that delete copies: three equal pictures in the folder "tree" and a window.
class MarkedCopies
{
protected:
    /// Creates the files and the window.
    void reset();

    [[nodiscard]] QString path(const QString &name) const
    {
        return m_tree->path(name);
    }
    /// Scans the folder "tree" and marks only \a marked; false on timeout.
    [[nodiscard]] bool scanAndMark(const QStringList &marked);
    /// Presses Delete with the second and the third copy marked. Verifies that the second has \a fate and the
    /// third, which is unchanged, is deleted.
    void checkDeletion(Fate fate);

    const QByteArray m_content = QByteArray(9000, 'p');
    std::unique_ptr<HostileTree> m_tree;
    std::unique_ptr<WindowDriver> m_driver;
    QStringList m_copies;
};
