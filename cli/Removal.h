#pragma once

#include "cli/ExitCode.h"
#include "cli/Journal.h"
#include "cli/ProtectedFiles.h"
#include "cli/RemovalAction.h"
#include "cli/Report.h"

#include <QSet>
#include <QString>

#include <functional>
#include <optional>
#include <set>

/// The options of `remove`, with their defaults.
struct RemovalOptions
{
    /// False: prints the plan and touches nothing.
    bool apply = false;
    RemovalAction action = RemovalAction::Trash;
    /// Path of the journal; empty: no journal.
    QString journal;
    /// Path of the report; empty if it was read from standard input.
    QString reportFile = {};
};

/// Called on the thread of Removal::run(). All but the last must be set.
struct RemovalCallbacks
{
    /// Prints a line of the plan or about a finished action. Returning false ends the run.
    std::function<bool(const QString &line)> print;
    /// Prints a line about a file that is left alone.
    std::function<void(const QString &line)> printRefusal;
    /// Prints why the run ends early.
    std::function<void(const QString &message)> printError;
    /// True ends the run before the next action.
    AbandonCheck interrupted;
    /// For tests: called between the comparison and the action.
    std::function<void(const QString &candidate)> compared;
};

/// Carries out a report, or prints the plan.
class Removal
{
public:
    /// \a report must outlive the removal.
    Removal(const Report &report, RemovalOptions options, RemovalCallbacks callbacks);

    [[nodiscard]] ExitCode run();

private:
    [[nodiscard]] bool openJournal();

    // These return false if the run ends.
    [[nodiscard]] bool handleGroup(const ReportGroup &group);
    [[nodiscard]] bool handleFile(const ReportGroup &group, const QString &path);
    [[nodiscard]] bool journal(const ReportGroup &group, const QString &path, const QString &result);
    [[nodiscard]] bool printDone(const ReportGroup &group, const QString &path);

    /// Why the report itself rules out \a path.
    [[nodiscard]] std::optional<QString> objection(const ReportGroup &group, const QString &path);
    /// Checks the file at \a path, and acts on it with --apply. Returns why it is left alone.
    [[nodiscard]] std::optional<Obstacle> attempt(const ReportGroup &group, const QString &path);
    [[nodiscard]] std::optional<Obstacle> check(
        const ReportGroup &group, const HeldFile &kept, const HeldFile &candidate) const;
    [[nodiscard]] std::optional<Obstacle> compare(HeldFile &kept, HeldFile &candidate) const;
    void refuse(const QString &path, const Obstacle &obstacle);
    void refuseGroup(const ReportGroup &group);
    void printSummary();
    [[nodiscard]] QString summary() const;

    const Report &m_report;
    const RemovalOptions m_options;
    const RemovalCallbacks m_callbacks;
    const ProtectedFiles m_protected;
    std::optional<Journal> m_journal;
    /// Normalised paths that were handled.
    QSet<QString> m_seen;
    /// Files with one name that were handled. Another path to such a file leads through a linked folder.
    std::set<FileIdentity> m_doneFiles;
    /// Whether the kept file of the current group is printed.
    bool m_isGroupPrinted = false;
    qint64 m_doneCount = 0;
    qint64 m_doneBytes = 0;
    ExitCode m_exitCode = ExitDone;
};
