#include "analysis/DuplicateAnalysis.h"

#include <QCoreApplication>

#include <cstdio>

/// Looks for duplicates among the files named on the command line and prints how many have a copy: the
/// analysis alone, to be watched from outside.
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const AnalysisCallbacks callbacks{
        .progress = [](int) {}, .duplicatesFound = [](qsizetype) {}, .abandoned = [] { return false; }};
    qsizetype files = 0;
    for (const DuplicateGroup &group : findDuplicates(QCoreApplication::arguments().mid(1), callbacks))
        files += group.files.size();
    std::printf("%lld\n", static_cast<long long>(files));
    return 0;
}
