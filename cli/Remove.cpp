#include "cli/Remove.h"

#include "cli/ExitCode.h"
#include "cli/Interruption.h"
#include "cli/JsonReport.h"
#include "cli/Messages.h"
#include "cli/Removal.h"
#include "cli/ReportInput.h"
#include "cli/StandardOutput.h"

using Qt::StringLiterals::operator""_s;

namespace {

/// Prints why there is no report to work on. Returns the exit code.
int reportUnusable(const QString &path, const Obstacle &obstacle)
{
    if (obstacle.kind == Obstacle::Kind::Interrupted) {
        printMessage(u"interrupted: nothing was touched"_s);
        return ExitInterrupted;
    }
    const QString name = path == u"-" ? u"from standard input"_s : path;
    printMessage(u"cannot use the report %1: %2"_s.arg(name, obstacle.reason));
    return ExitFailed;
}

/// Reads and parses the report. The memory of its text is free when this returns.
std::variant<Report, Obstacle> readReport(const QString &path)
{
    const auto bytes = readReportBytes(path, interrupted);
    if (const auto *const obstacle = std::get_if<Obstacle>(&bytes))
        return *obstacle;
    const ParsedReport parsed = parseReport(std::get<QByteArray>(bytes));
    if (!parsed.report)
        return Obstacle{Obstacle::Kind::System, parsed.reason};
    return *parsed.report;
}

int carryOut(const Report &report, const RemovalOptions &options)
{
    const auto print = [](const QString &line) {
        // Standard output may block forever if its reader was interrupted too.
        if (interrupted()) {
            printLine(line);
            return true;
        }
        return printToStandardOutput(withVisibleControls(line) + u'\n');
    };
    Removal removal(report, options,
        {.print = print,
            .printRefusal = printLine,
            .printError = printMessage,
            .interrupted = interrupted,
            .compared = {}});
    return removal.run();
}

} // namespace

int runRemove(const QStringList &arguments)
{
    const auto read = readCommandLine(removeCommand(), arguments);
    if (const int *const exitCode = std::get_if<int>(&read))
        return *exitCode;
    const auto &given = std::get<CommandArguments>(read);
    if (given.operands.size() != 1) {
        const QString message =
            given.operands.isEmpty() ? u"no report given"_s : u"more than one report given"_s;
        return reportWrongUsage({message}, removeCommand().name);
    }
    const QString &path = given.operands.constFirst();
    const auto report = readReport(path);
    if (const auto *const obstacle = std::get_if<Obstacle>(&report))
        return reportUnusable(path, *obstacle);
    return carryOut(std::get<Report>(report),
        {.apply = given.has(u"apply"_s),
            .action = removalActionNamed(given.value(u"action"_s)).value_or(RemovalAction::Trash),
            .journal = given.value(u"journal"_s),
            .reportFile = path == u"-" ? QString() : path});
}
