#include "cli/Find.h"

#include "app/Version.h"
#include "cli/Console.h"
#include "cli/ExitCode.h"
#include "cli/FilePath.h"
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

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <utility>

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// The result of a search.
struct Findings
{
    Report report;
    QList<UnreadablePath> unreadable;
};

bool isProgressShown(ProgressWish wish)
{
    return wish == ProgressWish::Always || (wish == ProgressWish::Auto && isTerminal(Stream::Error));
}

/// The same for all paths to one file or folder.
QString resolved(const QString &path)
{
    const QFileInfo file(asFilePath(path));
    const QString canonical = file.canonicalFilePath();
    return canonical.isEmpty() ? QDir::cleanPath(file.absoluteFilePath()) : canonical;
}

/// Sorted by path. Folders can be searched twice, by different paths.
QList<UnreadablePath> withoutRepetitions(QList<UnreadablePath> unreadable)
{
    std::ranges::sort(unreadable, comesBefore, &UnreadablePath::path);
    QList<UnreadablePath> unique;
    QSet<QString> seen;
    for (UnreadablePath &each : unreadable) {
        const QString path = resolved(each.path);
        if (seen.contains(path))
            continue;
        seen.insert(path);
        unique.append(std::move(each));
    }
    return unique;
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
    // If all sizes differ, nothing was compared and nothing reported.
    progress.showBytes(0, 0);

    const bool isAbsolute = options.format == ReportFormat::Json || options.format == ReportFormat::Csv;
    Findings findings;
    findings.unreadable = withoutRepetitions(survey.unreadable + contents.unreadable);
    Report &report = findings.report;
    report.compared = options.comparison == ContentComparison::Bytes ? u"bytes"_s : u"sample"_s;
    report.created = QDateTime::currentDateTimeUtc();
    report.folders = folders.absolute();
    report.groups = reportGroups(
        contents.groups, unique, folders, options.keep, isAbsolute ? PathForm::Absolute : PathForm::AsGiven);
    report.summary = summaryOf(report.groups);
    report.summary.files = files;
    report.summary.unreadable = findings.unreadable.size();
    report.summary.undecodableNames = survey.undecodableNames;
    report.version = quilloryVersion;
    return findings;
}

/// Prints what the search left out, and that files may differ if the report cannot say so.
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
    if (const auto obstacle = output.obstacle()) {
        printMessage(u"cannot write %1: %2"_s.arg(options.outputFile, *obstacle));
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
    const bool isFailure = options.failOnDuplicates && !findings.report.groups.isEmpty();
    return moreSerious(moreSerious(read, written), isFailure ? ExitDuplicatesFound : ExitDone);
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
