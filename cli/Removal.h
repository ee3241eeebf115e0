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

/// What the user asked for.
struct RemovalOptions
{
    /// False: nothing is touched, the plan is printed.
    bool apply = false;
    RemovalAction action = RemovalAction::Trash;
    /// Empty: none is written.
    QString journal;
};

/// All but the last must be set.
struct RemovalCallbacks
{
    /// Prints a line of the plan or of what was done. False ends the run.
    std::function<bool(const QString &line)> print;
    /// Prints a line about a file that is left alone.
    std::function<void(const QString &line)> printRefusal;
    /// Prints what ends the run.
    std::function<void(const QString &message)> printError;
    /// True ends the run before the next action.
    std::function<bool()> interrupted;
    /// Called between the comparison and the action, for tests.
    std::function<void(const QString &candidate)> compared;
};

/// Carries out a report, or shows what that would do.
class Removal
{
public:
    /// \a report must outlive the removal.
    Removal(const Report &report, RemovalOptions options, RemovalCallbacks callbacks);

    [[nodiscard]] ExitCode run();

private:
    [[nodiscard]] bool openJournal();
    /// Whether \a path leads to a file of the report.
    [[nodiscard]] bool isListed(const QString &path) const;
    /// These return false when the run is over.
    [[nodiscard]] bool handleGroup(const ReportGroup &group);
    [[nodiscard]] bool handleFile(const ReportGroup &group, const QString &path);
    [[nodiscard]] bool journal(const ReportGroup &group, const QString &path, const QString &result);
    [[nodiscard]] bool printDone(const ReportGroup &group, const QString &path);

    [[nodiscard]] std::optional<QString> objection(const ReportGroup &group, const QString &path);
    [[nodiscard]] std::optional<Obstacle> attempt(const ReportGroup &group, const QString &path);
    [[nodiscard]] std::optional<Obstacle> check(
        const ReportGroup &group, const HeldFile &kept, const HeldFile &candidate) const;
    [[nodiscard]] std::optional<Obstacle> compare(HeldFile &kept, HeldFile &candidate) const;
    void refuse(const QString &path, const Obstacle &obstacle);
    void printSummary();

    const Report &m_report;
    const RemovalOptions m_options;
    const RemovalCallbacks m_callbacks;
    const ProtectedFiles m_protected;
    std::optional<Journal> m_journal;
    /// Normalised paths that were dealt with.
    QSet<QString> m_seen;
    /// Files with one name that were dealt with: another path to one leads through a folder that is a link.
    std::set<FileIdentity> m_doneFiles;
    /// Whether the kept file of the current group was printed.
    bool m_isGroupPrinted = false;
    qint64 m_doneCount = 0;
    qint64 m_doneBytes = 0;
    ExitCode m_exitCode = ExitDone;
};
