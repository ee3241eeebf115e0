#include "analysis/ContentGroups.h"
#include "bench/Measurement.h"
#include "bench/support/ScanEverything.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QThread>

#include <algorithm>
#include <cstdio>

// Finds equal files byte by byte, like `quillory-cli find`, and prints the time of each stage instead of the
// groups.

using Qt::Literals::StringLiterals::operator""_s;

namespace {

/// Keeps one name of each file.
void dropFurtherNames(std::vector<SurveyedFile> &files)
{
    std::ranges::sort(files, {}, &SurveyedFile::identity);
    const auto isSameFile = [](const SurveyedFile &a, const SurveyedFile &b) {
        return a.identity == b.identity;
    };
    files.erase(std::unique(files.begin(), files.end(), isSameFile), files.end());
}

void printMemory(qint64 baseKibibytes, const std::vector<SurveyedFile> &files)
{
    qint64 pathBytes = 0;
    for (const SurveyedFile &file : files)
        pathBytes += file.path.size() * qint64(sizeof(QChar));
    const qint64 grown = (peakMemoryKibibytes() - baseKibibytes) * 1024;
    const auto count = static_cast<double>(std::max<std::size_t>(files.size(), 1));
    std::printf("peak memory  %lld KiB, of these %lld KiB before the search\n",
        static_cast<long long>(peakMemoryKibibytes()), static_cast<long long>(baseKibibytes));
    std::printf("per file     %.0f bytes and %.0f bytes of path\n",
        static_cast<double>(grown - pathBytes) / count, static_cast<double>(pathBytes) / count);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption threads(
        u"threads"_s, u"Number of threads."_s, u"number"_s, QString::number(QThread::idealThreadCount()));
    const QCommandLineOption sample(u"sample"_s, u"Compare fingerprints instead of bytes."_s);
    const QCommandLineOption hidden(u"hidden"_s, u"Include hidden files."_s);
    parser.addOptions({threads, sample, hidden});
    parser.addPositionalArgument(u"folders"_s, u"Folders to search."_s, u"folder..."_s);
    parser.process(application);

    const qint64 base = peakMemoryKibibytes();
    Stopwatch stage;
    const SurveyRequest request{.folders = parser.positionalArguments(),
        .includeHidden = parser.isSet(hidden),
        .minSize = 0,
        .options = scanEverything(),
        .excluded = {},
        .threads = parser.value(threads).toInt()};
    Survey survey = surveyFiles(request, {.progress = [](qint64) {}, .abandoned = [] { return false; }});
    const double walked = stage.lap();
    dropFurtherNames(survey.files);
    const double unified = stage.lap();
    const ContentGroups result = groupByContent(survey.files,
        parser.isSet(sample) ? ContentComparison::Sample : ContentComparison::Bytes, request.threads,
        {.progress = [](qint64, qint64) {}, .abandoned = [] { return false; }});
    const double grouped = stage.lap();

    std::size_t duplicates = 0;
    for (const std::vector<quint32> &group : result.groups)
        duplicates += group.size();
    std::printf("files      %zu\ngroups     %zu\nduplicates %zu\nunreadable %lld\n", survey.files.size(),
        result.groups.size(), duplicates,
        static_cast<long long>(survey.unreadable.size() + result.unreadable.size()));
    std::printf("walk         %8.3f s\nlinks        %8.3f s\ncontents     %8.3f s\nwhole        %8.3f s\n",
        walked, unified, grouped, walked + unified + grouped);
    printMemory(base, survey.files);
    return 0;
}
