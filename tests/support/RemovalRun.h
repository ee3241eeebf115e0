#pragma once

#include "cli/Removal.h"

#include <QStringList>

#include <functional>

/// The Windows tests run under Wine, which has no recycle bin.
#ifdef Q_OS_WIN
constexpr bool hasTrash = false;
#else
constexpr bool hasTrash = true;
#endif

[[nodiscard]] inline RemovalOptions applying(RemovalAction action)
{
    return {.apply = true, .action = action, .journal = {}};
}

[[nodiscard]] inline RemovalOptions planning(RemovalAction action)
{
    return {.apply = false, .action = action, .journal = {}};
}

/// Result of a removal.
struct RemovalOutcome
{
    ExitCode exitCode = ExitDone;
    QStringList lines;
    QStringList refusals;
    QStringList errors;
};

/// Called between the comparison and the action.
using ComparedHook = std::function<void(const QString &candidate)>;

/// Runs the removal of \a report in this process.
[[nodiscard]] inline RemovalOutcome carryOut(
    const Report &report, const RemovalOptions &options, const ComparedHook &compared = {},
    const AbandonCheck &interrupted = [] { return false; })
{
    RemovalOutcome outcome;
    Removal removal(report, options,
        {.print =
                [&](const QString &line) {
                    outcome.lines += line;
                    return true;
                },
            .printRefusal = [&](const QString &line) { outcome.refusals += line; },
            .printError = [&](const QString &line) { outcome.errors += line; },
            .interrupted = interrupted,
            .compared = compared});
    outcome.exitCode = removal.run();
    return outcome;
}
