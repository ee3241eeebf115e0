#pragma once

#include "analysis/DuplicateAnalysis.h"

#include <QList>
#include <QString>

#include <atomic>
#include <limits>

/// One analysis, with all that it told its caller.
struct Analysis
{
    /// \a patience is how often the analysis may ask whether it is abandoned and hear no.
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
    /// How often the analysis asked whether it is abandoned.
    std::atomic<int> questions{0};
};
