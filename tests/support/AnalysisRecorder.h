#pragma once

#include "analysis/DuplicateAnalysis.h"

#include <QList>
#include <QString>

#include <atomic>
#include <limits>

/// Runs one analysis and records its callbacks.
struct Analysis
{
    /// The analysis is abandoned after it has checked \a patience times.
    explicit Analysis(const QList<QString> &paths, int patience = std::numeric_limits<int>::max())
    {
        groups =
            findDuplicates(paths, {
                                      .progress = [this](int percent) { percents.append(percent); },
                                      .duplicatesFound = [this](qsizetype files) { found.append(files); },
                                      .abandoned = [this, patience] { return ++questions > patience; },
                                  });
    }

    [[nodiscard]] QList<QList<QString>> files() const
    {
        QList<QList<QString>> result;
        for (const DuplicateGroup &group : groups)
            result.append(group.files);
        return result;
    }

    QList<DuplicateGroup> groups;
    QList<int> percents;
    QList<qsizetype> found;
    /// Number of checks whether the analysis is abandoned.
    std::atomic<int> questions{0};
};
