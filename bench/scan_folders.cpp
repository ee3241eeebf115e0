#include "analysis/DuplicateAnalysis.h"
#include "bench/Measurement.h"
#include "bench/support/ScanEverything.h"
#include "scan/FileCollection.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

#include <cstdio>

// Runs the whole engine on folders, without a window. Its first lines of output have the same form as those
// of lower_bound, so that a script can compare them.

namespace {

/// Results of one run, and the seconds that its stages took.
struct Run
{
    qsizetype files = 0;
    qsizetype pathBytes = 0;
    qsizetype candidates = 0;
    qsizetype groups = 0;
    qsizetype duplicates = 0;
    double counting = 0;
    double collecting = 0;
    double sizing = 0;
    double fingerprinting = 0;
    double grouping = 0;
    qint64 baseKibibytes = 0;
    qint64 peakKibibytes = 0;
};

void collect(const QStringList &folders, const ScanOptions &options, Run &run, QStringList &paths)
{
    Stopwatch stage;
    const CollectionCallbacks callbacks{
        .counted = [&] { run.counting = stage.lap(); },
        .progress = [](const QString &, int) {},
        .abandoned = [] { return false; },
    };
    paths = collectFiles(folders, options, callbacks);
    run.collecting = stage.lap();
    run.files = paths.size();
    for (const QString &path : std::as_const(paths))
        run.pathBytes += path.size() * qsizetype(sizeof(QChar));
}

/// The first reported fingerprint ends the sizing stage, the last size class the fingerprinting stage.
void analyse(const QStringList &paths, Run &run)
{
    Stopwatch stage;
    const AnalysisCallbacks callbacks{
        .progress =
            [&](int) {
                if (run.candidates++ == 0)
                    run.sizing = stage.lap();
            },
        .duplicatesFound =
            [&](qsizetype files) {
                run.duplicates = files;
                run.fingerprinting += stage.lap();
            },
        .abandoned = [] { return false; },
    };
    const QList<DuplicateGroup> groups = findDuplicates(paths, callbacks);
    run.grouping = stage.lap();
    run.groups = groups.size();
    run.peakKibibytes = peakMemoryKibibytes();
}

void print(const Run &run)
{
    std::printf("files      %lld\ncandidates %lld\ngroups     %lld\nduplicates %lld\n",
        static_cast<long long>(run.files), static_cast<long long>(run.candidates),
        static_cast<long long>(run.groups), static_cast<long long>(run.duplicates));
    std::printf("count        %8.3f s\ncollect      %8.3f s\nsizes        %8.3f s\nfingerprints %8.3f s\n"
                "groups       %8.3f s\nwhole        %8.3f s\n",
        run.counting, run.collecting, run.sizing, run.fingerprinting, run.grouping,
        run.counting + run.collecting + run.sizing + run.fingerprinting + run.grouping);
    const qint64 grown = (run.peakKibibytes - run.baseKibibytes) * 1024;
    std::printf("peak memory  %lld KiB, of these %lld KiB before the scan\n",
        static_cast<long long>(run.peakKibibytes), static_cast<long long>(run.baseKibibytes));
    if (run.files > 0) {
        std::printf("per file     %.0f bytes and %.0f bytes of path\n",
            static_cast<double>(grown - run.pathBytes) / static_cast<double>(run.files),
            static_cast<double>(run.pathBytes) / static_cast<double>(run.files));
    }
}

/// Returns \a folders if all of them can be scanned, otherwise an empty list. Prints what is wrong.
QStringList checkedFolders(const QStringList &folders)
{
    if (folders.isEmpty()) {
        std::fprintf(stderr, "scan_folders: name at least one folder to scan\n");
        return {};
    }
    for (const QString &folder : folders) {
        if (const QFileInfo info(folder); !info.isDir() || !info.isReadable()) {
            std::fprintf(stderr, "scan_folders: %s is not a readable folder\n", qPrintable(folder));
            return {};
        }
    }
    return folders;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Runs the engine on folders and prints the time of each stage."));
    parser.addHelpOption();
    const QCommandLineOption desktopRule(
        QStringLiteral("skip-desktop"), QStringLiteral("Skip the desktop folder."));
    parser.addOption(desktopRule);
    parser.addPositionalArgument(
        QStringLiteral("folders"), QStringLiteral("Folders to scan."), QStringLiteral("folder..."));
    parser.process(application);

    const QStringList folders = checkedFolders(parser.positionalArguments());
    if (folders.isEmpty())
        return 2;
    ScanOptions options = scanEverything();
    options.skipDesktop = parser.isSet(desktopRule);

    Run run;
    run.baseKibibytes = peakMemoryKibibytes();
    QStringList paths;
    collect(folders, options, run, paths);
    analyse(paths, run);
    print(run);
    return 0;
}
