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
    /// \a bytes in B below 1 KiB, in KB below 1 MiB, in MB for everything larger; KB and MB with two
    /// decimals, in units of 1024.
    static QString groupSize(qint64 bytes);

    /// \a bytes in whole KB of 1024 bytes, cut off: 1023 bytes are 0 KB.
    static QString fileSize(qint64 bytes);

    /// Title of a group's row. \a files counts the files that are gone from the disk as well.
    static QString groupTitle(const QString &fileName, qint64 size, qsizetype files);

    /// The totals of a list of groups: groups, files (kept copies included) and their size in GB of 2^30
    /// bytes.
    static QString totals(const QList<DuplicateGroup *> &groups);
};
