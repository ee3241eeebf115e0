#include "cli/Removal.h"

#include "analysis/ContentEquality.h"
#include "cli/HeldFile.h"
#include "cli/JournalObjection.h"
#include "cli/Leftovers.h"
#include "cli/Obstacle.h"
#include "cli/SizeText.h"

#include <algorithm>

using Qt::StringLiterals::operator""_s;

namespace {

Obstacle notAsReported(const QString &reason)
{
    return {Obstacle::Kind::NotAsReported, reason};
}

Obstacle aboutKeptFile(const QString &kept, const Obstacle &obstacle)
{
    return {obstacle.kind, u"the kept file %1: %2"_s.arg(kept, obstacle.reason)};
}

/// "trashed" with --apply, else "would trash".
QString verb(const RemovalOptions &options)
{
    if (!options.apply)
        return u"would "_s + nameOf(options.action);
    const QString name = nameOf(options.action);
    return name.endsWith(u'e') ? name + u'd' : name + u"ed"_s;
}

} // namespace

Removal::Removal(const Report &report, RemovalOptions options, RemovalCallbacks callbacks)
    : m_report(report)
    , m_options(std::move(options))
    , m_callbacks(std::move(callbacks))
    , m_protected(report)
{
}

ExitCode Removal::run()
{
    if (m_options.apply) {
        if (!openJournal())
            return ExitFailed;
        removeLeftovers(m_report);
    }
    if (std::ranges::all_of(m_report.groups, [this](const ReportGroup &group) { return handleGroup(group); }))
        printSummary();
    else if (m_exitCode == ExitInterrupted)
        m_callbacks.printError(u"interrupted: "_s + summary());
    return m_exitCode;
}

bool Removal::openJournal()
{
    if (m_options.journal.isEmpty())
        return true;
    const auto objection = journalObjection(m_options.journal, m_options.reportFile, m_report);
    const auto reason = objection ? objection : m_journal.emplace(m_options.journal).open();
    if (reason)
        m_callbacks.printError(u"cannot write the journal %1: %2"_s.arg(m_options.journal, *reason));
    return !reason;
}

bool Removal::handleGroup(const ReportGroup &group)
{
    m_isGroupPrinted = false;
    const auto isMarked = [](const ReportFile &file) { return file.action == FileAction::Remove; };
    if (group.kept < 0 && std::ranges::none_of(group.files, isMarked))
        refuseGroup(group);
    return std::ranges::all_of(
        group.files, [&](const ReportFile &file) { return !isMarked(file) || handleFile(group, file.path); });
}

bool Removal::handleFile(const ReportGroup &group, const QString &path)
{
    if (m_callbacks.interrupted()) {
        m_exitCode = moreSerious(m_exitCode, ExitInterrupted);
        return false;
    }
    if (const auto reason = objection(group, path)) {
        refuse(path, notAsReported(*reason));
        return true;
    }
    if (!journal(group, path, u"begun"_s))
        return false;
    const std::optional<Obstacle> obstacle = attempt(group, path);
    const bool isJournalled = journal(group, path, obstacle ? obstacle->reason : u"done"_s);
    if (!obstacle)
        return printDone(group, path) && isJournalled;
    refuse(path, *obstacle);
    return obstacle->kind != Obstacle::Kind::Interrupted && isJournalled;
}

bool Removal::journal(const ReportGroup &group, const QString &path, const QString &result)
{
    if (!m_journal)
        return true;
    const auto reason = m_journal->append(
        {nameOf(m_options.action), group.files.at(group.kept).path, path, result, group.size});
    if (!reason)
        return true;
    m_callbacks.printError(u"cannot write the journal %1: %2"_s.arg(m_options.journal, *reason));
    m_exitCode = moreSerious(m_exitCode, ExitFailed);
    return false;
}

std::optional<QString> Removal::objection(const ReportGroup &group, const QString &path)
{
    if (group.kept < 0)
        return u"its group names no kept file"_s;
    if (const auto reason = m_protected.objection(path))
        return reason;
    const qsizetype before = m_seen.size();
    m_seen.insert(normalisedPath(path));
    return m_seen.size() > before ? std::nullopt : std::optional(u"the report lists it twice"_s);
}

std::optional<Obstacle> Removal::attempt(const ReportGroup &group, const QString &path)
{
    HeldFile kept(group.files.at(group.kept).path, m_callbacks.interrupted);
    if (kept.obstacle())
        return aboutKeptFile(kept.path(), *kept.obstacle());
    HeldFile candidate(path, m_callbacks.interrupted);
    if (candidate.obstacle())
        return candidate.obstacle();
    if (const auto obstacle = check(group, kept, candidate))
        return obstacle;
    if (m_options.apply) {
        if (const auto obstacle = compare(kept, candidate))
            return obstacle;
        if (m_callbacks.compared)
            m_callbacks.compared(path);
        if (const auto obstacle = act(m_options.action, kept, candidate))
            return obstacle;
    }
    if (candidate.links() == 1)
        m_doneFiles.insert(candidate.identity());
    ++m_doneCount;
    m_doneBytes += candidate.links() == 1 ? candidate.size() : 0;
    return std::nullopt;
}

std::optional<Obstacle> Removal::check(
    const ReportGroup &group, const HeldFile &kept, const HeldFile &candidate) const
{
    if (candidate.identity() == kept.identity())
        return notAsReported(u"it is the same file as the kept one"_s);
    if (const auto reason = m_protected.objection(candidate.identity()))
        return notAsReported(*reason);
    if (m_doneFiles.contains(candidate.identity()))
        return notAsReported(u"the report lists it twice"_s);
    if (candidate.size() != group.size)
        return notAsReported(u"its size is not that of the report"_s);
    if (kept.size() != group.size)
        return aboutKeptFile(kept.path(), notAsReported(u"its size is not that of the report"_s));
    return foreseeObstacle(m_options.action, kept, candidate);
}

std::optional<Obstacle> Removal::compare(HeldFile &kept, HeldFile &candidate) const
{
    switch (compareContents(kept.content(), candidate.content(), m_callbacks.interrupted)) {
    case ContentEquality::Equal:
        return std::nullopt;
    case ContentEquality::Different:
        return notAsReported(u"contents differ"_s);
    case ContentEquality::FirstUnreadable:
        return aboutKeptFile(kept.path(), {Obstacle::Kind::System, kept.content().errorString()});
    case ContentEquality::SecondUnreadable:
        return Obstacle{Obstacle::Kind::System, candidate.content().errorString()};
    case ContentEquality::Abandoned:
        break;
    }
    return Obstacle{Obstacle::Kind::Interrupted, u"interrupted"_s};
}

void Removal::refuse(const QString &path, const Obstacle &obstacle)
{
    switch (obstacle.kind) {
    case Obstacle::Kind::Interrupted:
        m_exitCode = moreSerious(m_exitCode, ExitInterrupted);
        return;
    case Obstacle::Kind::NotAsReported:
        m_exitCode = moreSerious(m_exitCode, ExitRefused);
        break;
    case Obstacle::Kind::System:
        m_exitCode = moreSerious(m_exitCode, ExitFailed);
        break;
    }
    m_callbacks.printRefusal(u"refused: %1: %2"_s.arg(path, obstacle.reason));
}

void Removal::refuseGroup(const ReportGroup &group)
{
    const auto number = std::distance(m_report.groups.constData(), &group) + 1;
    m_exitCode = moreSerious(m_exitCode, ExitRefused);
    m_callbacks.printRefusal(u"refused: group %1: it names no kept file"_s.arg(number));
}

bool Removal::printDone(const ReportGroup &group, const QString &path)
{
    const bool isPrinted =
        (m_isGroupPrinted || m_callbacks.print(u"keep: "_s + group.files.at(group.kept).path)) &&
        m_callbacks.print(verb(m_options) + u": "_s + path);
    m_isGroupPrinted = true;
    if (!isPrinted)
        m_exitCode = moreSerious(m_exitCode, ExitFailed);
    return isPrinted;
}

void Removal::printSummary()
{
    if (!m_callbacks.print(summary()))
        m_exitCode = moreSerious(m_exitCode, ExitFailed);
}

QString Removal::summary() const
{
    const QString files = counted(m_doneCount, u"file"_s);
    const QString outcome = u"%1 %2, %3"_s.arg(verb(m_options), files, sizeText(m_doneBytes));
    return m_options.apply ? outcome : outcome + u"; nothing was touched (--apply does it)"_s;
}
