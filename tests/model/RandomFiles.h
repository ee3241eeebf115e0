#pragma once

#include "tests/model/ExpectedDisk.h"
#include "tests/support/RandomChoice.h"

#include <QByteArray>
#include <QList>
#include <QString>

/// Fills an ExpectedDisk with random groups of copies.
class RandomFiles
{
public:
    /// The files are in the folders "a" and "b" below \a root. \a disk and \a random must outlive this
    /// object.
    RandomFiles(const QString &root, ExpectedDisk &disk, RandomChoice &random);

    /// Removes all files and writes new ones.
    void replaceAll();

private:
    [[nodiscard]] QByteArray content(int group, int file);
    [[nodiscard]] QString freshPath();

    const QString m_root;
    ExpectedDisk &m_disk;
    RandomChoice &m_random;
    int m_count = 0;
};
