#pragma once

#include "analysis/DuplicateGroup.h"

#include <QCoreApplication>
#include <QList>
#include <QString>

/// The texts of the results page.
class ResultTexts
{
    Q_DECLARE_TR_FUNCTIONS(ResultTexts)

public:
    /// Returns \a bytes in B below 1 KiB, in KB below 1 MiB, otherwise in MB. KB and MB are powers of 1024
    /// and have two decimals.
    ///
    /// Kept deliberately: MB is the largest unit; the user reads 5 GiB as 5120.00 MB.
    [[nodiscard]] static QString groupSize(qint64 bytes);

    /// Returns \a bytes in KB of 1024 bytes.
    ///
    /// Kept deliberately: rounds down, so that 1023 bytes are 0 KB for the user.
    [[nodiscard]] static QString fileSize(qint64 bytes);

    /// Returns the title of a group's row. \a files includes files that no longer exist.
    [[nodiscard]] static QString groupTitle(const QString &fileName, qint64 size, qsizetype files);

    /// Returns the number of groups, the number of their files, kept files included, and the size of these
    /// files in GB of 2^30 bytes.
    [[nodiscard]] static QString totals(const QList<DuplicateGroup *> &groups);
};
