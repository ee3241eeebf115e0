#include "cli/Find.h"

#include "app/Version.h"
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/FindOptions.h"
#include "cli/Interruption.h"
#include "cli/JsonReport.h"
#include "cli/Messages.h"
#include "cli/PathOrder.h"
#include "cli/ProgressDisplay.h"
#include "cli/ReportBuilder.h"
#include "cli/ReportFormats.h"
#include "cli/ReportOutput.h"
#include "cli/SearchedFolders.h"
#include "cli/SizeText.h"
#include "cli/UniqueFiles.h"

#include <algorithm>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// What a search has found, and what it could not read.
struct Findings
{
    Report report;
    QList<UnreadablePath> unreadable;
};

bool isProgressShown(ProgressWish wish)
{
    return wish == ProgressWish::Always || (wish == ProgressWish::Auto && isTerminal(Stream::Error));
}

/// Sorted by path; a folder that was searched twice is told of once.
QList<UnreadablePath> withoutRepetitions(QList<UnreadablePath> unreadable)
{
    std::ranges::sort(unreadable, comesBefore, &UnreadablePath::path);
    const auto isRepeated = [](const UnreadablePath &a, const UnreadablePath &b) { return a.path == b.path; };
    unreadable.erase(std::unique(unreadable.begin(), unreadable.end(), isRepeated), unreadable.end());
    return unreadable;
}

ReportSummary summaryOf(const QList<ReportGroup> &groups)
{
    const Removable removable = removableIn(groups);
    ReportSummary summary;
    summary.groups = groups.size();
    summary.removableBytes = removable.bytes;
    summary.removableFiles = removable.files;
    return summary;
}

Findings search(const FindOptions &options, ProgressDisplay &progress)
{
    const SearchedFolders folders(options.folders, options.references);
    SurveyRequest request = options.filters;
    request.folders = folders.given();
    Survey survey = surveyFiles(
        request, {.progress = [&](qint64 files) { progress.showFiles(files); }, .abandoned = interrupted});
    if (interrupted())
        return {};
    const UniqueFiles unique = uniteNames(std::move(survey.files), folders);
    const auto files = static_cast<qint64>(unique.files.size());
    progress.showFiles(files);
    const ContentGroups contents = groupByContent(unique.files, options.comparison, request.threads,
        {.progress = [&](qint64 done, qint64 total) { progress.showBytes(done, total); },
            .abandoned = interrupted});
    if (interrupted())
        return {};
    // Where no two files have the same size, nothing was compared.
    progress.showBytes(0, 0);

    const bool forPeople = options.format == ReportFormat::Text || options.format == ReportFormat::Paths;
    Findings findings;
    findings.unreadable = withoutRepetitions(survey.unreadable + contents.unreadable);
    Report &report = findings.report;
    report.compared = options.comparison == ContentComparison::Bytes ? u"bytes"_s : u"sample"_s;
    report.created = QDateTime::currentDateTimeUtc();
    report.folders = folders.absolute();
    report.groups = reportGroups(
        contents.groups, unique, folders, options.keep, forPeople ? PathForm::AsGiven : PathForm::Absolute);
    report.summary = summaryOf(report.groups);
    report.summary.files = files;
    report.summary.unreadable = findings.unreadable.size();
    report.summary.undecodableNames = survey.undecodableNames;
    report.version = quilloryVersion;
    return findings;
}

/// Tells of everything that the report cannot vouch for.
ExitCode printProblems(const FindOptions &options, const Findings &findings)
{
    for (const UnreadablePath &unreadable : findings.unreadable)
        printMessage(u"cannot read %1: %2"_s.arg(unreadable.path, unreadable.reason));
    const qint64 undecodable = findings.report.summary.undecodableNames;
    if (undecodable > 0)
        printMessage(counted(undecodable, u"name"_s) + u" left out: not valid text"_s);
    if (options.format == ReportFormat::Paths && options.comparison == ContentComparison::Sample)
        printMessage(u"compared by sample: files of a group may differ"_s);
    return findings.unreadable.isEmpty() && undecodable == 0 ? ExitDone : ExitFailed;
}

ExitCode writeReport(const FindOptions &options, const Report &report, ReportOutput &output)
{
    const ReportSink sink = [&output](const QByteArray &bytes) { return output.write(bytes); };
    switch (options.format) {
    case ReportFormat::Text:
        writeText(report, output.isStandardOutput() && showsColours(Stream::Output), sink);
        break;
    case ReportFormat::Json:
        sink(toJson(report));
        break;
    case ReportFormat::Csv:
        writeCsv(report, sink);
        break;
    case ReportFormat::Paths:
        writePaths(report, options.nullSeparated, sink);
        break;
    }
    return output.finish();
}

ExitCode find(const FindOptions &options)
{
    ReportOutput output(options.outputFile);
    if (const QString obstacle = output.obstacle(); !obstacle.isEmpty()) {
        printMessage(u"cannot write %1: %2"_s.arg(options.outputFile, obstacle));
        return ExitFailed;
    }
    ProgressDisplay progress(isProgressShown(options.progress));
    const Findings findings = search(options, progress);
    progress.finish();
    if (interrupted()) {
        printMessage(u"interrupted: nothing is reported"_s);
        return ExitInterrupted;
    }
    const ExitCode read = printProblems(options, findings);
    const ExitCode written = writeReport(options, findings.report, output);
    const bool fails = options.failOnDuplicates && !findings.report.groups.isEmpty();
    return moreSerious(moreSerious(read, written), fails ? ExitDuplicatesFound : ExitDone);
}

} // namespace

int runFind(const QStringList &arguments)
{
    const auto commandLine = readCommandLine(findCommand(), arguments);
    if (const int *const exitCode = std::get_if<int>(&commandLine))
        return *exitCode;
    const auto options = findOptions(std::get<CommandArguments>(commandLine));
    if (const auto *const error = std::get_if<UsageError>(&options))
        return reportWrongUsage(*error, findCommand().name);
    return find(std::get<FindOptions>(options));
}
